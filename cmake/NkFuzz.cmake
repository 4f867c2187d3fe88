# Fuzz targets: programs with LLVMFuzzerTestOneInput, linked with libFuzzer.

if(NOT NKDT_SANITIZE STREQUAL "fuzzer")
  message(FATAL_ERROR "NKDT_BUILD_FUZZ needs NKDT_SANITIZE=fuzzer (the preset fuzz sets both)")
endif()

# nk_add_fuzz(<name> SOURCES <file>... [INTERNAL] [LIBS <target>...])
# Start inputs, when there are any, lie in corpus/<name>.
function(nk_add_fuzz name)
  cmake_parse_arguments(PARSE_ARGV 1 fuzz "INTERNAL" "" "SOURCES;LIBS")
  add_executable(${name} ${fuzz_SOURCES})
  target_link_libraries(${name} PRIVATE
    nk_options ${fuzz_LIBS} $<IF:$<BOOL:${fuzz_INTERNAL}>,nk::dt_internal,nk::dt>)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/fuzz/bin")
endfunction()
