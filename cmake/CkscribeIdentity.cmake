# CKSCRIBE_COMMIT is the commit that the library shows. CKSCRIBE_COMMIT_TIME says when it was made, in seconds since
# 1970.

include(CkscribeCommit)
ckscribe_commit(${PROJECT_SOURCE_DIR} CKSCRIBE_COMMIT CKSCRIBE_COMMIT_TIME)

# CMake runs again after a commit.
if(EXISTS ${PROJECT_SOURCE_DIR}/.git)
  execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} rev-parse --git-path logs/HEAD
    OUTPUT_VARIABLE moves ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(moves "${moves}" ABSOLUTE BASE_DIR ${PROJECT_SOURCE_DIR})
  if(EXISTS ${moves} AND NOT IS_DIRECTORY ${moves})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${moves})
  endif()
endif()
