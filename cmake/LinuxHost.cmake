# The Linux host toolchain: clang 16 with libc++ 16 on Debian's Objective-C runtime.
# The compilers are looked up by full path: CMake does not search PATH for a bare Objective-C++ compiler name.

foreach(language IN ITEMS C CXX OBJCXX)
  set(compiler clang++-16)
  if(language STREQUAL "C")
    set(compiler clang-16)
  endif()
  find_program(VORN_${language}_COMPILER ${compiler})
  if(NOT VORN_${language}_COMPILER)
    message(FATAL_ERROR "${compiler} was not found. Run scripts/setup, which installs it or names what is missing.")
  endif()
  set(CMAKE_${language}_COMPILER ${VORN_${language}_COMPILER})
  mark_as_advanced(VORN_${language}_COMPILER)
endforeach()
