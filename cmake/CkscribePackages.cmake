# `cpack` makes packages of what is installed: ckscribe (component "runtime") and ckscribe-dev (component "development"),
# each for dpkg and for rpm. docs/platforms.md says how to build them.

set(CKSCRIBE_LICENCE "No licence has been granted yet" CACHE STRING "The licence, as packages state it")
set(CKSCRIBE_PACKAGE_CONTACT "ckscribe maintainers <maintainers@ckscribe.invalid>" CACHE STRING
  "Who made the packages, as packages state it")

# The packages contain the copyright file, and the notices of those libraries of the distribution that become a part of
# the command.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/copyright @ONLY CONTENT
"ckscribe @PROJECT_VERSION@

@CKSCRIBE_LICENCE@.
")
set(CKSCRIBE_CONTAINED libcli11-dev nlohmann-json3-dev libjs-chart.js)
if(CKSCRIBE_STATIC_LIBRARIES)
  list(APPEND CKSCRIBE_CONTAINED libarchive-dev libfmt-dev libsimdjson-dev)
endif()
if(TARGET ckscribe_tool)
  file(APPEND ${PROJECT_BINARY_DIR}/copyright
    "\nThe command contains parts of other programs. Their notices lie in the directory notices/ beside this file.\n")
  foreach(name IN LISTS CKSCRIBE_CONTAINED)
    if(EXISTS /usr/share/doc/${name}/copyright)
      install(FILES /usr/share/doc/${name}/copyright RENAME ${name}
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/notices COMPONENT runtime)
    endif()
  endforeach()
endif()
install(FILES ${PROJECT_BINARY_DIR}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(FILES ${PROJECT_BINARY_DIR}/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR}-dev COMPONENT development)

set(CPACK_PACKAGE_NAME ckscribe)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "")
set(CPACK_PACKAGE_CONTACT ${CKSCRIBE_PACKAGE_CONTACT})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_GENERATOR DEB RPM)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(runtime_summary "log what programs say to PKCS#11 modules")
set(runtime_text "An application loads libckscribe.so in place of the PKCS#11 library of its
hardware security module. libckscribe.so hands every call on unchanged and
logs it. The command ckscribe runs programs under the log, checks set-ups, and
answers questions about logs.")
set(development_summary "read and edit the configuration file of ckscribe")
set(development_text "Static libraries and headers with which a program reads and edits the
configuration file Wendrafil.conf as ckscribe does, with files for CMake and
pkg-config.")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ckscribe)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The command loads it when it speaks to an engine.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS libcurl4)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${runtime_summary}\n${runtime_text}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ckscribe-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "${development_summary}\n${development_text}")

set(CPACK_RPM_COMPONENT_INSTALL ON)
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_RELEASE 1)
set(CPACK_RPM_PACKAGE_LICENSE ${CKSCRIBE_LICENCE})
set(CPACK_RPM_RUNTIME_PACKAGE_NAME ckscribe)
set(CPACK_RPM_RUNTIME_PACKAGE_SUMMARY ${runtime_summary})
set(CPACK_RPM_RUNTIME_PACKAGE_DESCRIPTION ${runtime_text})
set(CPACK_RPM_DEVELOPMENT_PACKAGE_NAME ckscribe-dev)
set(CPACK_RPM_DEVELOPMENT_PACKAGE_SUMMARY ${development_summary})
set(CPACK_RPM_DEVELOPMENT_PACKAGE_DESCRIPTION ${development_text})
# Directories of the system belong to no package. The package's own are added by name.
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION ${CMAKE_INSTALL_PREFIX})
foreach(directory BINDIR LIBDIR LIBDIR/cmake LIBDIR/pkgconfig LIBDIR/pkcs11 INCLUDEDIR DATADIR DATADIR/bash-completion
    DATADIR/bash-completion/completions DATADIR/doc MANDIR MANDIR/man1 MANDIR/man5 MANDIR/man7)
  string(REGEX MATCH "^[A-Z]+" kind ${directory})
  string(REPLACE ${kind} ${CMAKE_INSTALL_FULL_${kind}} directory ${directory})
  list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION ${directory})
endforeach()
list(APPEND CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION ${CMAKE_INSTALL_PREFIX}/lib ${CKSCRIBE_FULL_MODULE_DIR})
# A package tells neither on which machine it was built nor when. Files are stripped and compressed already.
set(CPACK_RPM_SPEC_MORE_DEFINE "%define _buildhost localhost
%define use_source_date_epoch_as_buildtime 1
%define clamp_mtime_to_source_date_epoch 1
%define _build_id_links none
%define __os_install_post %{nil}")

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/FinishPackages.cmake)
# The script reads these.
set(CPACK_CKSCRIBE_COMMIT_TIME ${CKSCRIBE_COMMIT_TIME})
set(CPACK_CKSCRIBE_FULL_DOCDIR ${CMAKE_INSTALL_FULL_DOCDIR})
set(CPACK_CKSCRIBE_FULL_MANDIR ${CMAKE_INSTALL_FULL_MANDIR})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackagesOfCommit.cmake)
include(CPack)
