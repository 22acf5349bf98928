# cpack runs this between the installation into a directory of its own and the making of packages: compresses man pages, adds
# Debian's changelog, and gives every file the time of the commit.
message(STATUS "${CPACK_TEMPORARY_DIRECTORY} ${CPACK_TEMPORARY_INSTALL_DIRECTORY} ${CPACK_TOPLEVEL_DIRECTORY}")
