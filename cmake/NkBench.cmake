# Benchmark programs. A peer whose package is missing is left out, with a message; the others still run.

find_package(benchmark QUIET)
if(NOT benchmark_FOUND)
  message(FATAL_ERROR "The benchmarks need Google Benchmark (libbenchmark-dev); NKDT_BUILD_BENCH=OFF leaves them out")
endif()

# nk_add_bench(<name> SOURCES <file>... [INTERNAL] [LIBS <target>...] [PEERS <target>...])
#   PEERS  imported targets to compare with; each one found defines NK_PEER_<NAME>, "::" read as "_"
function(nk_add_bench name)
  cmake_parse_arguments(PARSE_ARGV 1 bench "INTERNAL" "" "SOURCES;LIBS;PEERS")
  add_executable(${name} ${bench_SOURCES})
  target_link_libraries(${name} PRIVATE
    nk_options ${bench_LIBS} $<IF:$<BOOL:${bench_INTERNAL}>,nk::dt_internal,nk::dt>
    benchmark::benchmark benchmark::benchmark_main)
  foreach(peer IN LISTS bench_PEERS)
    if(TARGET ${peer})
      string(REPLACE "::" "_" macro "NK_PEER_${peer}")
      string(TOUPPER "${macro}" macro)
      target_link_libraries(${name} PRIVATE ${peer})
      target_compile_definitions(${name} PRIVATE ${macro})
    else()
      message(STATUS "Benchmark ${name}: without its peer ${peer}, which is not installed")
    endif()
  endforeach()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bench/bin")
endfunction()
