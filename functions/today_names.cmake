# Lists the names of one kind that the distribution's PKCS#11 header has, for functions/full_names.cpp.
#
# today_names(PREFIX) writes functions/today_names_PREFIX.inc below the build folder, one TODAY(NAME) a line.
function(today_names prefix)
  set(header ${PKCS11_INCLUDE_DIR}/p11-kit/pkcs11.h)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(STRINGS ${header} lines REGEX "^#define[ \t]+${prefix}_[A-Z0-9_]+[ \t]+\\(")
  list(FILTER lines EXCLUDE REGEX "_VENDOR_DEFINED")
  list(TRANSFORM lines REPLACE "^#define[ \t]+(${prefix}_[A-Z0-9_]+).*" "TODAY(\\1)")
  list(JOIN lines "\n" text)
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/today_names_${prefix}.inc CONTENT "@text@\n" @ONLY)
endfunction()
