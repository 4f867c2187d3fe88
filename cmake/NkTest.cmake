# Test programs and what they need.

find_package(GTest QUIET)
if(NOT GTest_FOUND)
  message(FATAL_ERROR "The tests need GoogleTest (libgtest-dev, libgmock-dev); NKDT_BUILD_TESTS=OFF leaves them out")
endif()
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(NK_TABLES_DIR "${PROJECT_BINARY_DIR}/tables")
set(NK_TEST_RESULTS_DIR "${PROJECT_BINARY_DIR}/test-results")

# Tests are many and each runs once: compile time counts, not speed.
add_library(nk_test_options INTERFACE)
target_compile_options(nk_test_options INTERFACE
  -O0 $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>)

# nk_add_test(<name> SOURCES <file>... [INTERNAL] [PROBED] [NO_MAIN] [STANDARD 17|20|23] [LIBS <target>...] [LABELS <label>...])
#   INTERNAL  links the static archive, so that the test reaches what the shared library hides
#   PROBED    operator new asks the allocation probe too; left out with the thread sanitizer, whose own
#             operator new cannot be replaced
#   NO_MAIN   the sources bring their own main()
# Registers the program as one ctest entry of the same name. Its GoogleTest report goes to the folder
# test-results of the build.
function(nk_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "INTERNAL;PROBED;NO_MAIN" "STANDARD" "SOURCES;LIBS;LABELS")
  if(test_PROBED AND NKDT_SANITIZE STREQUAL "thread")
    return()
  endif()
  add_executable(${name} ${test_SOURCES})
  target_link_libraries(${name} PRIVATE
    nk_options nk_test_options ${test_LIBS}
    $<IF:$<BOOL:${test_INTERNAL}>,nk::dt_internal,nk::dt>
    GTest::gmock $<$<NOT:$<BOOL:${test_NO_MAIN}>>:GTest::gmock_main>)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  if(test_PROBED)
    target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support/ProbedNew.cc")
  endif()
  if(test_STANDARD)
    set_target_properties(${name} PROPERTIES CXX_STANDARD ${test_STANDARD})
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 900 LABELS "${test_LABELS}")
  nk_set_test_environment(${name})
endfunction()

# nk_set_test_environment(<test>) gives a ctest entry the variables that every test may rely on.
# NKDT_REFERENCE_DATA is not among them: it passes through from the caller's environment.
function(nk_set_test_environment name)
  set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
    "GTEST_OUTPUT=xml:${NK_TEST_RESULTS_DIR}/${name}.xml"
    "NKDT_TABLES=${NK_TABLES_DIR}"
    "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1:$ENV{ASAN_OPTIONS}"
    "UBSAN_OPTIONS=print_stacktrace=1:$ENV{UBSAN_OPTIONS}"
    "TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1:$ENV{TSAN_OPTIONS}")
  if(TARGET nkdt)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT "NKDT_PROGRAM=$<TARGET_FILE:nkdt>")
  endif()
endfunction()

# nk_generate_table(<test target> OUT <file.tsv> SCRIPT <model.py> [ARGS <arg>...] [DEPENDS <file>...])
# runs the model when it changed and stores what it prints as tables/<file.tsv>. The test finds the folder in
# the environment variable NKDT_TABLES and, when started by hand, in the macro of the same name.
function(nk_generate_table target)
  cmake_parse_arguments(PARSE_ARGV 1 table "" "OUT;SCRIPT" "ARGS;DEPENDS")
  set(script "${table_SCRIPT}")
  cmake_path(ABSOLUTE_PATH script)
  set(out "${NK_TABLES_DIR}/${table_OUT}")
  file(MAKE_DIRECTORY "${NK_TABLES_DIR}")
  add_custom_command(
    OUTPUT "${out}"
    COMMAND Python3::Interpreter -B "${script}" ${table_ARGS} > "${out}.part"
    COMMAND "${CMAKE_COMMAND}" -E rename "${out}.part" "${out}"
    DEPENDS "${script}" ${table_DEPENDS}
    COMMENT "Generating table ${table_OUT}"
    VERBATIM)
  target_sources(${target} PRIVATE "${out}")
  get_target_property(definitions ${target} COMPILE_DEFINITIONS)
  if(NOT definitions MATCHES "NKDT_TABLES=")
    target_compile_definitions(${target} PRIVATE "NKDT_TABLES=\"${NK_TABLES_DIR}\"")
  endif()
endfunction()

# nk_add_tests_of_folder(<prefix> [INTERNAL <name>...] [PROBED <name>...] [LIBS <target>...])
# makes one test program of each *_test.cc of the current folder. The name of a program is <prefix>.<file name without .cc>.
#   INTERNAL  files, without .cc, that reach what the shared library hides
#   PROBED    files, without .cc, whose operator new asks the allocation probe too
function(nk_add_tests_of_folder prefix)
  cmake_parse_arguments(PARSE_ARGV 1 folder "" "" "INTERNAL;PROBED;LIBS")
  file(GLOB files CONFIGURE_DEPENDS "*_test.cc")
  foreach(file IN LISTS files)
    cmake_path(GET file STEM stem)
    set(kinds "")
    foreach(kind IN ITEMS INTERNAL PROBED)
      if(stem IN_LIST folder_${kind})
        list(APPEND kinds ${kind})
      endif()
    endforeach()
    nk_add_test(${prefix}.${stem} SOURCES "${file}" ${kinds} LIBS ${folder_LIBS})
  endforeach()
endfunction()
