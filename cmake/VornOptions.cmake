# Options and flags that every target of the Linux build shares.

option(VORN_BUILD_TESTS "Build the test programs" ON)
set(VORN_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(VORN_CCACHE ccache)
mark_as_advanced(VORN_CCACHE)
if(VORN_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VORN_CCACHE})
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${VORN_CCACHE})
endif()

# CMake 3.25 knows these of C++ on Linux but not of Objective-C++: without them a target whose sources are all .mm files
# is linked without a soname, without a run path and without exporting its symbols.
foreach(variable IN ITEMS
    CMAKE_SHARED_LIBRARY_SONAME_@_FLAG
    CMAKE_SHARED_LIBRARY_RUNTIME_@_FLAG CMAKE_SHARED_LIBRARY_RUNTIME_@_FLAG_SEP
    CMAKE_SHARED_LIBRARY_RPATH_LINK_@_FLAG
    CMAKE_EXECUTABLE_RUNTIME_@_FLAG CMAKE_EXECUTABLE_RUNTIME_@_FLAG_SEP
    CMAKE_EXECUTABLE_RPATH_LINK_@_FLAG
    CMAKE_EXE_EXPORTS_@_FLAG)
  string(REPLACE "@" CXX of_cxx ${variable})
  string(REPLACE "@" OBJCXX of_objcxx ${variable})
  if(NOT DEFINED ${of_objcxx} AND DEFINED ${of_cxx})
    set(${of_objcxx} "${${of_cxx}}")
  endif()
endforeach()

# libc++ on the host too: std::string and std::map then lie in memory as they do on the device.
add_compile_options($<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-stdlib=libc++>)
add_link_options(-stdlib=libc++)
# File names in logs, assertions and debug information are relative to the checkout.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=")

if(VORN_SANITIZE)
  add_compile_options(-fsanitize=${VORN_SANITIZE} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VORN_SANITIZE})
else()
  # Not under a sanitizer: its runtime stands in the program, so shared libraries have open references to it.
  add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-z,defs>)
endif()

# Project code only: third-party sources do not see these.
add_library(VornWarnings INTERFACE)
target_compile_options(VornWarnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough -Wundef -Wnewline-eof -Wextra-semi -Werror
  $<$<COMPILE_LANGUAGE:OBJCXX>:-Wobjc-property-implementation>)

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
