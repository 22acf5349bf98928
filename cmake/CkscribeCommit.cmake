# ckscribe_commit(SOURCES COMMIT TIME): sets the variable COMMIT to the first 12 digits of the commit of the sources in the
# directory SOURCES. It sets TIME to that commit's time in seconds since 1970. Both come from `git archive`, or else from
# git. Where neither knows, the commit is "unknown" and the time 0.

function(ckscribe_commit sources commit time)
  set(${commit} unknown PARENT_SCOPE)
  set(${time} 0 PARENT_SCOPE)
  include(${sources}/cmake/ArchivedCommit.cmake)
  if(NOT archived_commit MATCHES "^[0-9a-f]+$")
    # Sources that lie below somebody else's repository are not of that repository's commit.
    if(NOT EXISTS ${sources}/.git)
      return()
    endif()
    execute_process(COMMAND git -C ${sources} log -1 "--format=%H;%ct"
      RESULT_VARIABLE status OUTPUT_VARIABLE found ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT status EQUAL 0)
      return()
    endif()
    list(GET found 0 archived_commit)
    list(GET found 1 archived_time)
  endif()
  string(SUBSTRING ${archived_commit} 0 12 digits)
  set(${commit} ${digits} PARENT_SCOPE)
  set(${time} ${archived_time} PARENT_SCOPE)
endfunction()
