# cpack reads this before it begins. The times in packages are that of the commit, unless the caller names
# another.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(ENV{SOURCE_DATE_EPOCH} ${CPACK_CKSCRIBE_COMMIT_TIME})
endif()
