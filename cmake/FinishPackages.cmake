# cpack runs this between the installation into a directory of its own and the making of packages. The script compresses man
# pages, adds Debian's changelog, and gives every file the time of the commit.

# run(COMMAND...): stops cpack where the command fails.
function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(time $ENV{SOURCE_DATE_EPOCH})

file(GLOB pages ${CPACK_TEMPORARY_DIRECTORY}/runtime${CPACK_CKSCRIBE_FULL_MANDIR}/man*/*)
if(pages)
  run(gzip -9n ${pages})
endif()

if(CPACK_GENERATOR STREQUAL "DEB")
  execute_process(COMMAND date --utc --rfc-email --date @${time} OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(changelog "ckscribe (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * CHANGELOG.md lists what is new.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  set(documents ${CPACK_TEMPORARY_DIRECTORY}/runtime${CPACK_CKSCRIBE_FULL_DOCDIR})
  configure_file(${documents}/CHANGELOG.md ${documents}/changelog COPYONLY)
  foreach(directory ${documents} ${CPACK_TEMPORARY_DIRECTORY}/development${CPACK_CKSCRIBE_FULL_DOCDIR}-dev)
    file(WRITE ${directory}/changelog.Debian "${changelog}")
    run(gzip -9n ${directory}/changelog.Debian)
  endforeach()
  run(gzip -9n ${documents}/changelog)
endif()

run(find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date @${time} {} +)
