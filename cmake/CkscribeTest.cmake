# Builds the test programs. ckscribe_test(NAME ...) makes one. ckscribe_test_sources(NAME ...) compiles sources that
# several of them share.
#
# Compiling the tests costs far more than compiling the library. Therefore they are compiled without optimization in
# every configuration, share one precompiled header, and share the objects of their common sources. The library keeps
# the flags of its configuration.

set(CKSCRIBE_TEST_OPTIMIZATION "-O0" CACHE STRING "Optimization of the tests; it stands behind the configuration's own")

# ckscribe_compile_test_library(TARGET): compiles a library that a test program loads. The library exports every name.
function(ckscribe_compile_test_library target)
  ckscribe_compile(${target})
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET default)
  target_compile_options(${target} PRIVATE ${CKSCRIBE_TEST_OPTIMIZATION})
  target_include_directories(${target} SYSTEM PRIVATE ${PKCS11_INCLUDE_DIR})
endfunction()

# ckscribe_test_module(NAME SOURCES...): makes such a library.
function(ckscribe_test_module name)
  add_library(${name} MODULE ${ARGN})
  ckscribe_compile_test_library(${name})
endfunction()

# ckscribe_compile_test(TARGET): compiles a part of test programs. All parts are compiled alike, as the shared
# precompiled header requires: position independent as programs are, and not as libraries are.
function(ckscribe_compile_test target)
  ckscribe_compile(${target})
  # Tests call one thing at a time, without the locks that the product needs.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wno-thread-safety>)
  # The compiler cache knows a precompiled header of another clone only if no times stand in it.
  target_compile_options(${target} PRIVATE "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(${target} PRIVATE -fPIE)
  if(NOT CKSCRIBE_FUZZ)
    target_compile_options(${target} PRIVATE ${CKSCRIBE_TEST_OPTIMIZATION})
  endif()
  target_include_directories(${target} SYSTEM PRIVATE ${PKCS11_INCLUDE_DIR})
endfunction()

# Every file that a test writes is searched for secrets. Therefore the search is fast in every configuration: it is
# optimized, and no sanitizer watches it.
add_library(secret_search STATIC ${PROJECT_SOURCE_DIR}/tests/secrets/secret_search.cpp)
ckscribe_compile_test(secret_search)
set_source_files_properties(${PROJECT_SOURCE_DIR}/tests/secrets/secret_search.cpp PROPERTIES
  COMPILE_OPTIONS "-O2;-fno-sanitize=all")

# Every test program links this library. It owns their common precompiled header.
add_library(ckscribe_test_common OBJECT ${PROJECT_SOURCE_DIR}/tests/sanitizer_options.cpp)
ckscribe_compile_test(ckscribe_test_common)
target_link_libraries(ckscribe_test_common PUBLIC secret_search GTest::gtest GTest::gtest_main Threads::Threads ${CMAKE_DL_LIBS})
target_precompile_headers(ckscribe_test_common PRIVATE ${PROJECT_SOURCE_DIR}/tests/precompiled.h)

# ckscribe_test_sources(NAME SOURCES... [DEFINITIONS...]): compiles sources once, for all test programs that name NAME
# among their libraries. DEFINITIONS hold for those programs' own sources, too.
function(ckscribe_test_sources name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEFINITIONS" ${ARGN})
  add_library(${name} OBJECT ${arg_SOURCES})
  ckscribe_compile_test(${name})
  target_link_libraries(${name} PUBLIC GTest::gtest Threads::Threads ${CMAKE_DL_LIBS})
  target_compile_definitions(${name} PUBLIC ${arg_DEFINITIONS})
  target_precompile_headers(${name} REUSE_FROM ckscribe_test_common)
endfunction()

# ckscribe_test(NAME SOURCES... LIBS libraries... [IN_ONE_PROCESS]): makes one test program. CTest knows each of its tests
# by name, and runs each in a process of its own.
#
# IN_ONE_PROCESS is for a program of many short tests that leave nothing behind in the process. CTest knows such a program
# as one test. With sanitizers to start a process takes much longer than such a test.
function(ckscribe_test name)
  cmake_parse_arguments(arg "IN_ONE_PROCESS" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  ckscribe_compile_test(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} ckscribe_test_common)
  target_precompile_headers(${name} REUSE_FROM ckscribe_test_common)
  set(properties TIMEOUT 600 FAIL_REGULAR_EXPRESSION "${part_of_secret}")
  if(arg_IN_ONE_PROCESS)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ${properties})
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
  endif()
endfunction()

# ckscribe_own_operators(TARGET) lets a test program define `operator new` and `operator delete` itself. clang++ links the
# thread sanitizer into a program together with such operators, and clang links it without them.
function(ckscribe_own_operators target)
  if(CKSCRIBE_SANITIZE STREQUAL thread AND CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    target_link_options(${target} PRIVATE --driver-mode=gcc)
    target_link_libraries(${target} PRIVATE stdc++ m)
  endif()
endfunction()
