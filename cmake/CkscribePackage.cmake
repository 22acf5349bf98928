# Makes the package for programs that read or edit the configuration file: find_package(ckscribe) gives them the static
# libraries ckscribe::config and ckscribe::util, whose headers are included as "config/..." and "util/...".
# The component "development" installs it.

set(CKSCRIBE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ckscribe)

# ckscribe_package_library(TARGET NAME HEADERS...): makes a library a part of the package, as ckscribe::NAME.
function(ckscribe_package_library target name)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT ckscribe
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(FILES ${ARGN}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ckscribe/${name} COMPONENT development)
endfunction()

# The exported targets are the whole configuration of the package, because it depends on no other.
function(ckscribe_install_package)
  install(EXPORT ckscribe NAMESPACE ckscribe:: FILE ckscribeConfig.cmake
    DESTINATION ${CKSCRIBE_PACKAGE_DIR} COMPONENT development)
  include(CMakePackageConfigHelpers)
  set(version ${PROJECT_BINARY_DIR}/ckscribeConfigVersion.cmake)
  write_basic_package_version_file(${version} COMPATIBILITY SameMajorVersion)
  install(FILES ${version} DESTINATION ${CKSCRIBE_PACKAGE_DIR} COMPONENT development)
endfunction()
