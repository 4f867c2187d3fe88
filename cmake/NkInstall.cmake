# The installed package: find_package(nkdt [COMPONENTS <binding>...]), a pkg-config file for each library, the
# documentation and the printers for gdb. Libraries and headers are installed by their rooms.

include(CMakePackageConfigHelpers)

set(nk_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/nkdt")
get_property(nk_installed_libraries GLOBAL PROPERTY NK_INSTALLED_LIBRARIES)

# nk_in_prefix(<variable> <dir>): the folder as a .pc file names it.
function(nk_in_prefix variable dir)
  if(IS_ABSOLUTE "${dir}")
    set(${variable} "${dir}" PARENT_SCOPE)
  else()
    set(${variable} "\${prefix}/${dir}" PARENT_SCOPE)
  endif()
endfunction()

# nk_install_component(<target>): what finds one of the installed libraries.
function(nk_install_component target)
  get_target_property(library ${target} OUTPUT_NAME)
  foreach(property NK_EXPORT_SET NK_NEEDS NK_HINT NK_PKG_CONFIG)
    get_target_property(${property} ${target} ${property})
  endforeach()

  install(EXPORT ${NK_EXPORT_SET} NAMESPACE nk:: DESTINATION "${nk_package_dir}")
  string(REPLACE "_" "-" module "${library}")
  set(NK_PC_NAME "${module}")
  set(NK_PC_LIBRARY "${library}")
  set(NK_PC_REQUIRES "")
  set(NK_PC_DESCRIPTION "${PROJECT_DESCRIPTION}")

  if(library MATCHES "^nkdt_(.+)$")
    set(NK_COMPONENT "${CMAKE_MATCH_1}")
    set_property(GLOBAL APPEND PROPERTY NK_COMPONENTS ${NK_COMPONENT})
    list(TRANSFORM NK_NEEDS REPLACE "(.+)" "\"\\1\"")
    list(JOIN NK_NEEDS " " NK_NEEDS)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/nkdtComponent.cmake.in" "${PROJECT_BINARY_DIR}/${module}.cmake" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${module}.cmake" DESTINATION "${nk_package_dir}")

    list(JOIN NK_PKG_CONFIG " " modules)
    string(STRIP "nkdt = ${PROJECT_VERSION} ${modules}" NK_PC_REQUIRES)
    string(APPEND NK_PC_DESCRIPTION ", component ${NK_COMPONENT}")
  endif()
  configure_file("${PROJECT_SOURCE_DIR}/cmake/nkdt.pc.in" "${PROJECT_BINARY_DIR}/${module}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${module}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()

# The paths in a .pc file follow the file, so that an installed copy can be moved.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(NK_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH nk_pc_up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" nk_pc_up "${nk_pc_up}")
  set(NK_PC_PREFIX "\${pcfiledir}/${nk_pc_up}")
endif()
nk_in_prefix(NK_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
nk_in_prefix(NK_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")

set_property(GLOBAL PROPERTY NK_COMPONENTS "")
foreach(library IN LISTS nk_installed_libraries)
  nk_install_component(${library})
endforeach()

get_property(NK_COMPONENTS GLOBAL PROPERTY NK_COMPONENTS)
list(JOIN NK_COMPONENTS " " NK_COMPONENTS)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/nkdtConfig.cmake.in" "${PROJECT_BINARY_DIR}/nkdtConfig.cmake"
  INSTALL_DESTINATION "${nk_package_dir}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/nkdtConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/nkdtConfig.cmake" "${PROJECT_BINARY_DIR}/nkdtConfigVersion.cmake"
  DESTINATION "${nk_package_dir}")

# The guide as it stands in the source tree, so that its links hold.
install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${CMAKE_INSTALL_DOCDIR}"
  FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.cc")

# gdb loads the printers with the library: it looks for a script of the library's name and folder.
install(FILES "${PROJECT_SOURCE_DIR}/tools/gdb/nkdt_printers.py"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR}"
  RENAME "libnkdt.so.${PROJECT_VERSION}-gdb.py")

if(PROJECT_IS_TOP_LEVEL)
  include(NkPackage)
endif()
