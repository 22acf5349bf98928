# Makes the package for programs that read or edit the configuration file: find_package(ckscribe) gives them the static
# libraries ckscribe::config and ckscribe::util, whose headers are included as "config/..." and "util/...". pkg-config
# knows them as ckscribe-config and ckscribe-util. The component "development" installs it.

set(CKSCRIBE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ckscribe)

# ckscribe_package_library(TARGET NAME HEADERS...): makes a library a part of the package, as ckscribe::NAME.
function(ckscribe_package_library target name)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT ckscribe
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  if(ARGN)
    install(FILES ${ARGN}
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ckscribe/${name} COMPONENT development)
  endif()
endfunction()

# ckscribe_pkg_config(NAME DESCRIPTION LIBRARIES...): does the same for pkg-config, as ckscribe-NAME. LIBRARIES are the
# names of the library and of those that it needs.
function(ckscribe_pkg_config name description)
  list(TRANSFORM ARGN PREPEND -lckscribe_ OUTPUT_VARIABLE libraries)
  list(JOIN libraries " " libraries)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/ckscribe-${name}.pc @ONLY CONTENT
"prefix=@CMAKE_INSTALL_PREFIX@
libdir=\${prefix}/@CMAKE_INSTALL_LIBDIR@
includedir=\${prefix}/@CMAKE_INSTALL_INCLUDEDIR@

Name: ckscribe-@name@
Description: @description@
Version: @PROJECT_VERSION@
Cflags: -I\${includedir}/ckscribe
Libs: -L\${libdir} @libraries@
")
  install(FILES ${PROJECT_BINARY_DIR}/ckscribe-${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()

# The exported targets are the whole configuration of the package, because it depends on no other.
function(ckscribe_install_package)
  install(EXPORT ckscribe NAMESPACE ckscribe:: FILE ckscribeConfig.cmake
    DESTINATION ${CKSCRIBE_PACKAGE_DIR} COMPONENT development)
  include(CMakePackageConfigHelpers)
  set(version ${PROJECT_BINARY_DIR}/ckscribeConfigVersion.cmake)
  write_basic_package_version_file(${version} COMPATIBILITY SameMajorVersion)
  install(FILES ${version} DESTINATION ${CKSCRIBE_PACKAGE_DIR} COMPONENT development)
  ckscribe_pkg_config(config "Reads and edits the configuration file Wendrafil.conf" config host util)
  ckscribe_pkg_config(util "Works on texts, numbers and hexadecimal digits" util)
endfunction()
