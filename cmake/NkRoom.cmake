# Rooms and the libraries that are made of them.
#
# A room is a folder with public headers and sources. It becomes the object library nk::<name>, and sees the
# headers of the rooms that it names and no others. Internal headers (those beside the sources) are visible to
# the rooms above, never to users of the finished library.

set(nk_room_dir "${CMAKE_CURRENT_LIST_DIR}")

# nk_add_room(<name> SOURCES <file>... [INCLUDE <dir>] [INTERNAL <dir>] [DEPENDS <room>...])
#   INCLUDE   the folder of the public headers, "include" unless given
#   INTERNAL  the folder of the internal headers, "src" unless given
function(nk_add_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "INCLUDE;INTERNAL" "SOURCES;DEPENDS")
  if(NOT room_INCLUDE)
    set(room_INCLUDE include)
  endif()
  if(NOT room_INTERNAL)
    set(room_INTERNAL src)
  endif()
  cmake_path(ABSOLUTE_PATH room_INCLUDE NORMALIZE)
  cmake_path(ABSOLUTE_PATH room_INTERNAL NORMALIZE)

  add_library(nk_${name} OBJECT)
  add_library(nk::${name} ALIAS nk_${name})
  target_sources(nk_${name} PRIVATE ${room_SOURCES})
  target_include_directories(nk_${name} PUBLIC "${room_INCLUDE}" "${room_INTERNAL}")
  target_compile_options(nk_${name} PRIVATE -fno-semantic-interposition)
  target_link_libraries(nk_${name} PRIVATE nk_options)
  list(TRANSFORM room_DEPENDS PREPEND nk_)
  target_link_libraries(nk_${name} PUBLIC ${room_DEPENDS})
  set_target_properties(nk_${name} PROPERTIES
    NK_PUBLIC_HEADERS "${room_INCLUDE}" NK_INTERNAL_HEADERS "${room_INTERNAL}")
endfunction()

# nk_add_library(dt ROOMS <room>...) makes from the objects of the rooms
#   nk::dt           the shared library libnkdt.so, with the public headers only
#   nk::dt_internal  a static archive with the internal headers too, for tests of what the library hides
function(nk_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 lib "" "" "ROOMS")
  set(objects "")
  set(public_headers "")
  set(internal_headers "")
  foreach(room IN LISTS lib_ROOMS)
    list(APPEND objects $<TARGET_OBJECTS:nk_${room}>)
    get_target_property(dir nk_${room} NK_PUBLIC_HEADERS)
    list(APPEND public_headers "${dir}")
    get_target_property(dir nk_${room} NK_INTERNAL_HEADERS)
    list(APPEND internal_headers "${dir}")
  endforeach()

  add_library(nk_internal_headers INTERFACE)
  add_library(nk::internal_headers ALIAS nk_internal_headers)
  target_include_directories(nk_internal_headers INTERFACE ${internal_headers})

  add_library(nk_${name} SHARED ${objects})
  add_library(nk::${name} ALIAS nk_${name})
  nk_set_library_properties(nk_${name} ${name} nk${name})
  foreach(dir IN LISTS public_headers)
    target_include_directories(nk_${name} PUBLIC "$<BUILD_INTERFACE:${dir}>")
    nk_install_headers("${dir}")
  endforeach()
  nk_install_library(nk_${name} nkdtTargets)

  add_library(nk_${name}_internal STATIC EXCLUDE_FROM_ALL ${objects})
  add_library(nk::${name}_internal ALIAS nk_${name}_internal)
  target_include_directories(nk_${name}_internal PUBLIC ${public_headers})
  target_link_libraries(nk_${name}_internal PRIVATE nk_options INTERFACE nk_internal_headers)
endfunction()

# nk_set_library_properties(<target> <export name> <file name>): what every shared library of the project has.
function(nk_set_library_properties target export_name output_name)
  target_compile_features(${target} INTERFACE cxx_std_17)
  target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  target_link_libraries(${target} PRIVATE nk_options)
  target_link_options(${target} PRIVATE -Wl,-Bsymbolic-functions)
  if(NOT NKDT_SANITIZE)
    target_link_options(${target} PRIVATE
      -Wl,--no-undefined "LINKER:--version-script=${nk_room_dir}/NkExports.map")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${nk_room_dir}/NkExports.map")
  endif()
  # Before 1.0, each minor version may break what is built against the one before.
  set(soversion ${PROJECT_VERSION_MAJOR})
  if(soversion EQUAL 0)
    set(soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  endif()
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${export_name}
    OUTPUT_NAME ${output_name}
    LINKER_LANGUAGE CXX
    VERSION ${PROJECT_VERSION}
    SOVERSION ${soversion}
    INSTALL_RPATH "$ORIGIN")
endfunction()

function(nk_install_headers dir)
  if(NKDT_INSTALL)
    install(DIRECTORY "${dir}/" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" FILES_MATCHING PATTERN "*.h")
  endif()
endfunction()

# nk_install_library(<target> <export set> [NEEDS <package>...] [HINT <text>] [PKG_CONFIG <module>...])
# A library that is named nkdt_<x> becomes the component <x> of the package and the pkg-config module nkdt-<x>.
#   NEEDS       what users must find to compile and link: arguments of find_package, one string a package
#   HINT        what that is in words, for the message when it is missing
#   PKG_CONFIG  the same as modules of pkg-config
function(nk_install_library target export_set)
  cmake_parse_arguments(PARSE_ARGV 2 lib "" "HINT" "NEEDS;PKG_CONFIG")
  if(NKDT_INSTALL)
    install(TARGETS ${target} EXPORT ${export_set}
      LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
      INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
    set_property(GLOBAL APPEND PROPERTY NK_INSTALLED_LIBRARIES ${target})
    set_target_properties(${target} PROPERTIES
      NK_EXPORT_SET ${export_set}
      NK_NEEDS "${lib_NEEDS}"
      NK_HINT "${lib_HINT}"
      NK_PKG_CONFIG "${lib_PKG_CONFIG}")
  endif()
endfunction()
