# Options and flags that every target of the Linux build shares, beside those of VornOptions.cmake.

option(VORN_BUILD_TESTS "Build the test programs" ON)
option(VORN_BUILD_BENCHMARKS "Build the benchmarks" OFF)
option(VORN_FUZZ "Link the fuzz targets with libFuzzer, and let everything tell it what was reached" OFF)
set(VORN_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")

# The compiler's cache names sources from the build folder (scripts/build); messages name them from the checkout all the same.
file(RELATIVE_PATH vorn_checkout_from_build ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})
add_compile_options("-ffile-prefix-map=${vorn_checkout_from_build}=")

# Takes a fifth of the time of the system's linker, and comes with the one for iOS.
add_link_options(-fuse-ld=lld)

if(VORN_SANITIZE)
  add_compile_options(-fsanitize=${VORN_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VORN_SANITIZE})
else()
  # Calls of one library into another take their address from a table instead of a stub that does. Lines that are not printed
  # are four such calls.
  add_compile_options(-fno-plt)
  # Not under a sanitizer: its runtime stands in the program, so shared libraries have open references to it.
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-z,defs>)
endif()
if(VORN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Objective-C++ on GCC's runtime and GNUstep base.
find_path(VORN_GNUSTEP_INCLUDE Foundation/Foundation.h PATHS /usr/include/GNUstep NO_DEFAULT_PATH)
file(GLOB vorn_objc_candidates LIST_DIRECTORIES true /usr/lib/gcc/*/12/include)
find_path(VORN_OBJC_INCLUDE objc/runtime.h PATHS ${vorn_objc_candidates} NO_DEFAULT_PATH)
if(NOT VORN_GNUSTEP_INCLUDE OR NOT VORN_OBJC_INCLUDE)
  message(FATAL_ERROR "The headers of GNUstep base or of the Objective-C runtime (libobjc-12-dev) were not found. "
                      "Run scripts/setup, which installs them or names what is missing.")
endif()

add_library(VornObjC INTERFACE)
target_compile_options(VornObjC INTERFACE
  # The header directory of the runtime stands last (-idirafter): it also holds GCC's own stddef.h and intrinsics.
  "$<$<COMPILE_LANGUAGE:OBJCXX>:SHELL:-fobjc-runtime=gcc -fconstant-string-class=NSConstantString -fblocks -fexceptions -fobjc-exceptions -D_NATIVE_OBJC_EXCEPTIONS -idirafter ${VORN_OBJC_INCLUDE}>")
target_include_directories(VornObjC SYSTEM INTERFACE
  ${CMAKE_SOURCE_DIR}/platform/linux/include ${VORN_GNUSTEP_INCLUDE})
