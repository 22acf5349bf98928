# Installs the package below a fresh directory, builds a tool there from the installed files alone, and uses it.
#
# cmake -DBUILD=... -DTOOL_SOURCES=... -DCOMPILER=... -DGENERATOR=... -DFLAGS=... -P installed_package_test.cmake

execute_process(COMMAND mktemp -d OUTPUT_VARIABLE directory OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

# run(COMMAND...): succeeds, or ends the test with what the command printed.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    file(REMOVE_RECURSE ${directory})
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "${command}: ${result}\n${output}")
  endif()
endfunction()

# expect(RESULT OUTPUT ARGUMENTS...): the tool's exit status and what it prints.
function(expect expected_result expected_output)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env WendrafilConfigurationPath=${directory} ${directory}/tool/configuration_tool ${ARGN}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL expected_result OR NOT output STREQUAL expected_output)
    file(REMOVE_RECURSE ${directory})
    message(FATAL_ERROR "${ARGN}: expected ${expected_result} \"${expected_output}\", got ${result} \"${output}\"")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --component development --prefix ${directory}/prefix)
file(COPY ${TOOL_SOURCES}/ DESTINATION ${directory}/sources)
run(${CMAKE_COMMAND} -S ${directory}/sources -B ${directory}/tool -G ${GENERATOR} -DCMAKE_BUILD_TYPE=Debug
  -DCMAKE_PREFIX_PATH=${directory}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${directory}/tool)

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
file(REMOVE_RECURSE ${directory})
