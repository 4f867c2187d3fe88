# The installed package: find_package(nkdt [COMPONENTS odbc]) and pkg-config.

include(CMakePackageConfigHelpers)

set(nk_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nkdt")

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/nkdtConfig.cmake.in" "${PROJECT_BINARY_DIR}/nkdtConfig.cmake"
  INSTALL_DESTINATION "${nk_package_dir}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/nkdtConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/nkdtConfig.cmake" "${PROJECT_BINARY_DIR}/nkdtConfigVersion.cmake"
  DESTINATION "${nk_package_dir}")

install(EXPORT nkdtTargets NAMESPACE nk:: DESTINATION "${nk_package_dir}")
if(TARGET nk::dt_odbc)
  install(EXPORT nkdtOdbcTargets NAMESPACE nk:: DESTINATION "${nk_package_dir}")
endif()

# The paths in the .pc file follow the file, so that an installed copy can be moved.
cmake_path(APPEND nk_pc_dir "${CMAKE_INSTALL_LIBDIR}" pkgconfig)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(NK_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH nk_pc_up "/${nk_pc_dir}" "/")
  string(REGEX REPLACE "/$" "" nk_pc_up "${nk_pc_up}")
  set(NK_PC_PREFIX "\${pcfiledir}/${nk_pc_up}")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/nkdt.pc.in" "${PROJECT_BINARY_DIR}/nkdt.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/nkdt.pc" DESTINATION "${nk_pc_dir}")
