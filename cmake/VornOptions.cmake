# Options and flags that every target of every build shares.

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

# CMake 3.25 knows these of C++ but not of Objective-C++: without them a target whose sources are all .mm files is
# linked without a soname, without a run path and without exporting its symbols.
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

if(IOS)
  # The folder in which the debug information says that everything was compiled: the checkout, to which names are relative.
  add_compile_options(-ffile-compilation-dir=.)
else()
  # libc++ on the host too: std::string and std::map then lie in memory as they do on the device.
  add_compile_options($<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-stdlib=libc++>)
  add_link_options(-stdlib=libc++)
endif()
# File names in logs, assertions and debug information are relative to the checkout.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=")

# Project code only: third-party sources do not see these.
add_library(VornWarnings INTERFACE)
target_compile_options(VornWarnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wnon-virtual-dtor -Woverloaded-virtual
  -Wimplicit-fallthrough -Wundef -Wnewline-eof -Wextra-semi -Werror
  $<$<COMPILE_LANGUAGE:OBJCXX>:-Wobjc-property-implementation>)
