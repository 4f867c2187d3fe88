# How every target of the project is compiled: language level, warnings, visibility, instrumentation.
# The target nk_options carries the flags; it is linked privately, so no consumer of the library sees them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
  endif()
  find_program(NKDT_CCACHE ccache)
  if(NKDT_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${NKDT_CCACHE}")
  endif()
endif()

add_library(nk_options INTERFACE)
target_compile_options(nk_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-align -Wformat=2 -Wimplicit-fallthrough -Wundef -Wextra-semi
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
  $<$<BOOL:${NKDT_WERROR}>:-Werror>)
target_compile_definitions(nk_options INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

set(nk_instrumentation "")
if(NKDT_SANITIZE STREQUAL "address")
  set(nk_instrumentation -fsanitize=address,undefined)
elseif(NKDT_SANITIZE STREQUAL "thread")
  set(nk_instrumentation -fsanitize=thread)
elseif(NKDT_SANITIZE STREQUAL "fuzzer")
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "NKDT_SANITIZE=fuzzer needs clang++ (CMAKE_CXX_COMPILER is ${CMAKE_CXX_COMPILER})")
  endif()
  set(nk_instrumentation -fsanitize=fuzzer-no-link,address,undefined)
elseif(NKDT_SANITIZE)
  message(FATAL_ERROR "NKDT_SANITIZE is '${NKDT_SANITIZE}', but must be address, thread, fuzzer or empty")
endif()
if(nk_instrumentation)
  target_compile_options(nk_options INTERFACE
    ${nk_instrumentation} -fno-sanitize-recover=all -fno-omit-frame-pointer -g1)
  target_link_options(nk_options INTERFACE ${nk_instrumentation})
endif()
if(NKDT_COVERAGE)
  target_compile_options(nk_options INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(nk_options INTERFACE --coverage)
endif()
