# One library per module: orvane_module(Name LINK libs...) makes a static library of every source
# file in the present folder, which other modules include as "Name/Header.h".

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

add_library(orvane_options INTERFACE)
target_compile_options(orvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion
  -Wno-sign-conversion -Werror -fno-omit-frame-pointer
  $<$<NOT:$<CONFIG:Debug>>:-ffunction-sections>) # for the linker to put those of the start together
target_compile_definitions(orvane_options INTERFACE
  QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_USE_QSTRINGBUILDER
  ORVANE_VERSION="${PROJECT_VERSION}")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 sees uninitialized values in every optional<QString> that an optimized build moves.
  target_compile_options(orvane_options INTERFACE -Wno-maybe-uninitialized)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  # A header of libxcb has a member named "explicit", which is renamed while it is read.
  target_compile_options(orvane_options INTERFACE -Wno-keyword-macro)
endif()
if(ORVANE_PRECOMPILE_HEADERS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(orvane_options INTERFACE -fpch-preprocess) # ccache needs it
endif()
if(ORVANE_SANITIZE)
  target_compile_options(orvane_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all)
  target_link_options(orvane_options INTERFACE -fsanitize=address,undefined)
endif()
if(ORVANE_TSAN)
  target_compile_options(orvane_options INTERFACE -fsanitize=thread)
  target_link_options(orvane_options INTERFACE -fsanitize=thread)
endif()

# The code of tests is never optimized, which halves the time to compile it; what is tested is, as the preset says.
add_library(orvane_test_options INTERFACE)
target_compile_options(orvane_test_options INTERFACE -O0)

# Lets a target that links Qt6::Core use a precompiled header: orvane_precompiled or orvane_precompiled_tests.
function(orvane_reuse_precompiled target header)
  if(TARGET ${header})
    target_precompile_headers(${target} REUSE_FROM ${header})
  endif()
endfunction()

function(orvane_module name)
  cmake_parse_arguments(ARG "" "" "LINK;LINK_PRIVATE" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/Sources")
  target_link_libraries(${name} PUBLIC orvane_options ${ARG_LINK} PRIVATE ${ARG_LINK_PRIVATE})
  orvane_reuse_precompiled(${name} orvane_precompiled)
endfunction()

# orvane_test(Name LINK libs...): a GoogleTest program of every source file in the present folder.
function(orvane_test name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/Sources" "${CMAKE_SOURCE_DIR}/Tests")
  target_link_libraries(${name} PRIVATE orvane_options ${ARG_LINK} GTest::gtest GTest::gmock)
endfunction()

# A target for all programs of a kind, so that only those that are run have to be built.
foreach(label unit contract desktop)
  add_custom_target(${label}_tests)
endforeach()
add_custom_target(sanitized_tests)
add_dependencies(sanitized_tests unit_tests contract_tests)

# orvane_ctest(Name LABEL unit|contract|desktop [TIMEOUT seconds] [SESSION options...]): gives an
# orvane_test program the main function of its kind and enters it in CTest under that label. Contract
# and desktop tests each run on a private desktop of their own, started with the SESSION options; one that
# fails there is tried a second time.
function(orvane_ctest name)
  cmake_parse_arguments(ARG "" "LABEL;TIMEOUT" "SESSION" ${ARGN})
  if(ARG_LABEL STREQUAL "unit")
    set(timeout 120)
    add_test(NAME ${name} COMMAND ${name})
  elseif(ARG_LABEL MATCHES "^(contract|desktop)$")
    set(timeout 1200)
    add_test(NAME ${name}
      COMMAND "${CMAKE_SOURCE_DIR}/Tools/desktop/run-tests" ${ARG_SESSION} -- $<TARGET_FILE:${name}>)
  else()
    message(FATAL_ERROR "orvane_ctest(${name}): LABEL is unit, contract or desktop, not '${ARG_LABEL}'")
  endif()
  if(ARG_TIMEOUT)
    set(timeout ${ARG_TIMEOUT})
  endif()
  target_link_libraries(${name} PRIVATE orvane_test_options orvane_main_${ARG_LABEL})
  orvane_reuse_precompiled(${name} orvane_precompiled_tests)
  add_dependencies(${ARG_LABEL}_tests ${name})
  set_tests_properties(${name} PROPERTIES LABELS "${ARG_LABEL}" TIMEOUT ${timeout})
endfunction()
