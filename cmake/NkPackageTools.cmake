# NK_PACKAGE_DEB tells whether the packages include one for Debian: its tools must be at hand, and what is built must
# be meant for Debian's folders (the preset "package").
find_program(NKDT_DPKG_SHLIBDEPS dpkg-shlibdeps)
find_program(NKDT_FILE file)
set(NK_PACKAGE_DEB OFF)
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  if(NKDT_DPKG_SHLIBDEPS AND NKDT_FILE)
    set(NK_PACKAGE_DEB ON)
  else()
    message(STATUS "The Debian package is left out: its tools are not installed (dpkg-dev, file)")
  endif()
endif()
