# The target `headers`: every header of the project compiled alone, so that a missing include shows where it arises.
# A header without Objective-C is compiled as C++ too.

function(vorn_add_header_check)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}
    ShareDir/*.h VornFacebook/*.h core/*.h platform/frameworks/*.h platform/linux/*.h simulator/*.h tests/*.h
    benchmarks/*.h fuzz/*.h)
  # The headers that the Swift compiler writes import nothing where modules are off; the real ones do not compile alone.
  list(FILTER headers EXCLUDE REGEX "-Swift\\.h$")
  set(sources)
  foreach(header IN LISTS headers)
    file(READ ${CMAKE_SOURCE_DIR}/${header} text)
    set(kinds mm)
    if(NOT text MATCHES "#import|@interface|@protocol|@class|[^A-Za-z]id[ <]|NS[A-Z][a-z]+\\*")
      list(APPEND kinds cc)
    endif()
    foreach(kind IN LISTS kinds)
      set(source ${CMAKE_BINARY_DIR}/headers/${header}.${kind})
      file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${CMAKE_SOURCE_DIR}/${header}\"\n" @ONLY)
      list(APPEND sources ${source})
    endforeach()
  endforeach()
  add_library(headers OBJECT EXCLUDE_FROM_ALL ${sources})
  target_include_directories(headers PRIVATE
    ${CMAKE_SOURCE_DIR}/VornFacebook ${CMAKE_SOURCE_DIR}/simulator ${CMAKE_SOURCE_DIR}/fuzz)
  target_link_libraries(headers PRIVATE VornTestSupport VornWarnings)
endfunction()
