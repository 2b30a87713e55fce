# Every source of bench/ is a program of its own.

find_package(benchmark REQUIRED)
file(GLOB bench_sources CONFIGURE_DEPENDS bench/*.cpp)
foreach(source IN LISTS bench_sources)
  get_filename_component(name "${source}" NAME_WE)
  add_executable(bench_${name} "${source}")
  quorvelin_settings(bench_${name})
  target_link_libraries(bench_${name} PRIVATE quorvelin_engine benchmark::benchmark)
  set_target_properties(bench_${name} PROPERTIES
    OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
endforeach()
