# `git archive` writes the commit of the sources and its time into these lines (.gitattributes).
set(archived_commit "$Format:%H$")
set(archived_time "$Format:%ct$")
