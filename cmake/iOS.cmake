# The iOS toolchain without Apple's SDK: clang 16 and lld 16 on Linux, with the hand-written SDK of platform/ios. A build
# with Xcode's SDK uses no toolchain file; docs/ios-build.md describes both.
#
# VORN_IOS_TARGET  the target triple with the deployment target, such as arm64-apple-ios13.0. The presets set it.

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORN_IOS_TARGET)
if(NOT VORN_IOS_TARGET)
  message(FATAL_ERROR "VORN_IOS_TARGET is not set. Configure one of the presets whose names begin with 'ios-'.")
endif()

set(CMAKE_SYSTEM_NAME iOS)
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR "${VORN_IOS_TARGET}")

# The SDK is given by path, because names are looked up with Xcode's tools, and its folder is called as CMake wants the SDK
# of iOS to be called. The triple tells devices and simulators apart, so that one folder serves both. The SDK version that
# the binary records is the one in SDKSettings.json.
cmake_path(SET vorn_platform NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../platform")
set(CMAKE_OSX_SYSROOT ${vorn_platform}/ios/iPhoneOS.sdk)

foreach(language IN ITEMS C CXX OBJCXX)
  set(compiler clang++-16)
  if(language STREQUAL "C")
    set(compiler clang-16)
  endif()
  find_program(VORN_${language}_COMPILER ${compiler})
  set(CMAKE_${language}_COMPILER ${VORN_${language}_COMPILER})
  set(CMAKE_${language}_COMPILER_TARGET ${VORN_IOS_TARGET})
  mark_as_advanced(VORN_${language}_COMPILER)
endforeach()
find_program(VORN_IOS_LINKER ld64.lld-16)
find_program(CMAKE_AR llvm-ar-16)
find_program(CMAKE_RANLIB llvm-ranlib-16)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-16)
mark_as_advanced(VORN_IOS_LINKER)
set(vorn_libcxx /usr/lib/llvm-16/include/c++/v1)
foreach(tool IN ITEMS ${VORN_C_COMPILER} ${VORN_OBJCXX_COMPILER} ${VORN_IOS_LINKER} ${CMAKE_AR} ${CMAKE_INSTALL_NAME_TOOL}
    ${vorn_libcxx}/string)
  if(NOT EXISTS ${tool})
    message(FATAL_ERROR "clang 16, lld 16, the tools of llvm 16 or the headers of libc++ 16 were not found (${tool}). "
                        "Run scripts/setup, which installs them or names what is missing.")
  endif()
endforeach()
# Without a look at programs, which would need libraries that nothing of the project needs.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# The headers of libc++ by their path: the driver would take whichever version is installed last. Our site file stands
# before Debian's. The declarations of UIKit and Facebook's kits serve this build and the Linux build.
foreach(language IN ITEMS CXX OBJCXX)
  set(CMAKE_${language}_FLAGS_INIT "-nostdinc++ -g -faddrsig")
  set(CMAKE_${language}_STANDARD_INCLUDE_DIRECTORIES
    ${vorn_platform}/frameworks ${vorn_platform}/ios/include/c++ ${vorn_libcxx})
endforeach()

# The compiler driver calls the linker. The version given for that is an Apple linker's of today: with none the driver
# uses older options, which lld does not know. Signing is asked for, because lld does it by itself for some targets only.
# The times of objects that go into the debug map are zero, and their paths relative to the build folder: two builds give
# the same bytes. Functions of equal code become one, as Apple's linker does by itself, where no address of them is taken:
# -faddrsig above says which those are. The driver has no use for -nostdinc++ here and need not say so.
string(JOIN " " CMAKE_SHARED_LINKER_FLAGS_INIT
  --ld-path=${VORN_IOS_LINKER} -mlinker-version=711 -Wno-unused-command-line-argument
  "-F \"${vorn_platform}/ios/frameworks\"" -Wl,-fatal_warnings,-adhoc_codesign,-oso_prefix,.,--icf=safe)
foreach(language IN ITEMS CXX OBJCXX)
  set(CMAKE_${language}_LINKER_LAUNCHER env ZERO_AR_DATE=1)
endforeach()

# The link stubs, on which the library then depends.
file(GLOB_RECURSE VORN_IOS_STUBS ${vorn_platform}/ios/*.tbd)
