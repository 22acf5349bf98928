# This file finds where p11-kit looks for modules, and decides where the library is installed.
#
# p11_kit_modules      the directory in which p11-kit looks for a module whose path is not whole
# CKSCRIBE_MODULE_DIR  the directory of libckscribe.so, an option. A relative one lies below the prefix of the
#                      installation. Without the option it is p11-kit's directory, seen from p11-kit's own prefix.

if(NOT CMAKE_CROSSCOMPILING)
  find_package(PkgConfig QUIET)
endif()
if(PkgConfig_FOUND)
  pkg_get_variable(p11_kit_modules p11-kit-1 p11_module_path)
  pkg_get_variable(p11_kit_prefix p11-kit-1 prefix)
endif()
set(modules_below_prefix ${CMAKE_INSTALL_LIBDIR}/pkcs11)
if(p11_kit_modules AND p11_kit_prefix STREQUAL CMAKE_INSTALL_PREFIX)
  file(RELATIVE_PATH modules_below_prefix ${p11_kit_prefix} ${p11_kit_modules})
endif()
set(CKSCRIBE_MODULE_DIR ${modules_below_prefix} CACHE STRING
  "Where libckscribe.so is installed; a relative directory lies below the prefix")
get_filename_component(CKSCRIBE_FULL_MODULE_DIR ${CKSCRIBE_MODULE_DIR} ABSOLUTE BASE_DIR ${CMAKE_INSTALL_PREFIX})
if(NOT p11_kit_modules)
  set(p11_kit_modules ${CKSCRIBE_FULL_MODULE_DIR})
endif()
