# Every source of fuzz/ is a libFuzzer target of its own.

if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "the fuzz targets need Clang")
endif()
file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*.cpp)
foreach(source IN LISTS fuzz_sources)
  get_filename_component(name "${source}" NAME_WE)
  add_executable(fuzz_${name} "${source}")
  quorvelin_settings(fuzz_${name})
  target_link_libraries(fuzz_${name} PRIVATE quorvelin_engine)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(fuzz_${name} PROPERTIES
    OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/fuzz")
endforeach()
