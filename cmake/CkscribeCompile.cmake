# ckscribe_compile(NAME) sets how a target of this project is compiled. Every target calls it once.

# Debian's p11-kit keeps the PKCS#11 header in a folder of its own. Only the build needs it.
find_path(PKCS11_INCLUDE_DIR p11-kit/pkcs11.h PATH_SUFFIXES p11-kit-1 REQUIRED)

# ckscribe_tool_lacks(SENTENCE): says why the command is left out. It is an error if the command was asked for.
function(ckscribe_tool_lacks sentence)
  if(CKSCRIBE_TOOL STREQUAL "AUTO")
    message(STATUS "${sentence}")
  else()
    message(FATAL_ERROR "${sentence}")
  endif()
endfunction()

function(ckscribe_compile target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/ckscribe>)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${CKSCRIBE_WERROR}>:-Werror>)
  # What is shipped does not name the directory in which it was built. Where tests are built, people debug, and debuggers
  # look for the sources by these names.
  if(NOT CKSCRIBE_TESTS OR NOT BUILD_TESTING)
    target_compile_options(${target} PRIVATE
      -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
  endif()
  # A missing lock is a fault and no matter of style: this warning is always an error.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety> $<$<CXX_COMPILER_ID:Clang>:-Werror=thread-safety>)
  if(CKSCRIBE_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(CKSCRIBE_SANITIZE)
    target_compile_options(${target} PUBLIC
      $<BUILD_INTERFACE:-fsanitize=${CKSCRIBE_SANITIZE}> $<BUILD_INTERFACE:-fno-omit-frame-pointer>
      $<BUILD_INTERFACE:-fno-sanitize-recover=all>
      # The library calls every function of the vendor with a row of words, whatever its declaration is
      # (front/vendor_words.h).
      $<BUILD_INTERFACE:$<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>>)
    target_link_options(${target} PUBLIC $<BUILD_INTERFACE:-fsanitize=${CKSCRIBE_SANITIZE}>)
  endif()
endfunction()
