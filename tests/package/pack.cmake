# Makes the packages of the build BUILD_DIR, and nothing else, in the folder PACKAGES.
file(REMOVE_RECURSE "${PACKAGES}")
execute_process(
  COMMAND "${CMAKE_CPACK_COMMAND}" --config "${BUILD_DIR}/CPackConfig.cmake" -B "${PACKAGES}"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
