# The packages that cpack makes of what is installed: a .tar.gz, which can be unpacked anywhere, and on Debian
# a .deb. Both hold libraries, headers, program and documentation.

set(CPACK_PACKAGE_NAME nkdt)
set(CPACK_PACKAGE_VENDOR "The nkdt developers")
set(CPACK_PACKAGE_CONTACT "The nkdt developers <nkdt@nkdt.invalid>")
set(CPACK_PACKAGE_DESCRIPTION
"Texts, numbers, decimals, dates and durations that know whether they are
defined and whether they were modified, for C++ programs. They convert without
loss between plain text, formatted text, SQL, database fields and archives.
The package holds the libraries, their headers, the program nkdt, which takes
database tables through them, the guide and printers for gdb.")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_SYSTEM_NAME "${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_STRIP_FILES ON)
# Folders can be read by everybody, whatever the umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_THREADS 0)
set(CPACK_GENERATOR TGZ)

include(NkPackageTools)
if(NK_PACKAGE_DEB)
  list(APPEND CPACK_GENERATOR DEB)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# Linked libraries are found by the tools; the program opens its SQLite files through a driver that it loads.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
if(TARGET nkdt)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS libsqliteodbc)
endif()
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "odbc-postgresql, g++, cmake, pkg-config, unixodbc-dev")

include(CPack)
