# This test installs the package below a fresh directory, and builds and uses programs there only from the installed
# files. The programs are a tool, the example of docs/package.md, and a program with functions of its own whose names
# are common. The test expects every header to be installed that an installed header names, even in a comment.
# pkg-config leads to the same libraries as CMake.
#
# cmake -DBUILD=... -DSOURCE=... -DCOMPILER=... -DGENERATOR=... -DFLAGS=... -P installed_package_test.cmake

execute_process(COMMAND mktemp -d OUTPUT_VARIABLE directory OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# run(COMMAND...) runs the command. If it fails, shows what it printed and ends the test.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    file(REMOVE_RECURSE ${directory})
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "${command}: ${result}\n${output}")
  endif()
endfunction()

# build(NAME) builds the sources in ${directory}/NAME.sources into ${directory}/NAME.
function(build name)
  run(${CMAKE_COMMAND} -S ${directory}/${name}.sources -B ${directory}/${name} -G ${GENERATOR} -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_PREFIX_PATH=${directory}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
  run(${CMAKE_COMMAND} --build ${directory}/${name})
endfunction()

# expect_of(PROGRAM RESULT OUTPUT ARGUMENTS...) runs the program and compares its exit status and what it prints.
function(expect_of program expected_result expected_output)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env WendrafilConfigurationPath=${directory} ${directory}/${program} ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL expected_result OR NOT output STREQUAL expected_output)
    file(REMOVE_RECURSE ${directory})
    message(FATAL_ERROR "${program} ${ARGN}: expected ${expected_result} \"${expected_output}\", got ${result} \"${output}\"")
  endif()
endfunction()

# expect(RESULT OUTPUT ARGUMENTS...) does the same with the tool.
function(expect expected_result expected_output)
  expect_of(tool/configuration_tool "${expected_result}" "${expected_output}" ${ARGN})
endfunction()

# example(LANGUAGE PATH) writes the first block of that language in docs/package.md to the file PATH.
function(example language path)
  file(READ ${SOURCE}/docs/package.md page)
  string(FIND "${page}" "```${language}\n" begin)
  if(begin EQUAL -1)
    message(FATAL_ERROR "docs/package.md has no block of ${language}")
  endif()
  string(LENGTH "```${language}\n" length)
  math(EXPR begin "${begin} + ${length}")
  string(SUBSTRING "${page}" ${begin} -1 block)
  string(FIND "${block}" "```" end)
  string(SUBSTRING "${block}" 0 ${end} block)
  file(WRITE ${path} "${block}")
endfunction()

# expect_complete_headers(DIRECTORY) expects every header to be there that a header of the directory names.
function(expect_complete_headers include)
  set(count 0)
  file(GLOB_RECURSE headers ${include}/*.h)
  foreach(header ${headers})
    file(READ ${header} text)
    string(REGEX REPLACE "#include <[^>]*>" "" text "${text}")
    string(REGEX MATCHALL "[a-z_]+/[a-z_]+\\.h" named "${text}")
    foreach(name ${named})
      math(EXPR count "${count} + 1")
      if(NOT EXISTS ${include}/${name})
        message(SEND_ERROR "${header} names ${name}, which is not installed: add it to the package, or do not name it")
      endif()
    endforeach()
  endforeach()
  if(count LESS 2)
    message(SEND_ERROR "expected headers in ${include} that name others")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --component development --prefix ${directory}/prefix)
expect_complete_headers(${directory}/prefix/include/ckscribe)
file(COPY ${SOURCE}/tests/config/installed_tool/ DESTINATION ${directory}/tool.sources)
build(tool)

file(WRITE ${directory}/Wendrafil.conf "Cluster01 = {\n   ClusterName = one;\n}\n")
expect(1 "" get Misc Key)
expect(0 "" set Misc Key "a value")
expect(0 "a value\n" get Misc Key)
expect(0 "" clear Misc Key)
expect(1 "" get Misc Key)
expect(0 "/usr/lib/libmordavek2.so\n" library)
expect(0 "" timeout 1500)
expect(1 "" timeout 1.5)
file(READ ${directory}/Wendrafil.conf text)
set(expected "Cluster01 = {\n   ClusterName = one;\n   ClusterReceiveTimeout = 1500;\n}\nMisc = {\n}\n")
if(NOT text STREQUAL expected)
  message(SEND_ERROR "the file holds \"${text}\"")
endif()

example(cmake ${directory}/example.sources/CMakeLists.txt)
example(cpp ${directory}/example.sources/timeout.cpp)
build(example)
expect_of(example/timeout 0 "Misc has no Timeout.\n")
expect_of(example/timeout 0 "Timeout is 1500.\n")

# This builds the same program with what pkg-config says.
file(GLOB_RECURSE pkg_config_file ${directory}/prefix/ckscribe-config.pc)
get_filename_component(pkg_config_directory ${pkg_config_file} DIRECTORY)
run(sh -c "options=$(PKG_CONFIG_PATH=${pkg_config_directory} pkg-config --define-variable=prefix=${directory}/prefix --cflags --libs ckscribe-config) \
  && ${COMPILER} -std=c++20 ${FLAGS} ${directory}/example.sources/timeout.cpp $options -o ${directory}/with_pkg_config")
file(WRITE ${directory}/Wendrafil.conf "Misc = {\n   Timeout = 2500;\n}\n")
expect_of(with_pkg_config 0 "Timeout is 2500.\n")

file(COPY ${SOURCE}/tests/config/program_with_common_names/ DESTINATION ${directory}/common.sources)
build(common)
expect_of(common/program_with_common_names 0 "")

file(REMOVE_RECURSE ${directory})
