# netinfo_add_test(NAME SOURCES file... LIBS target... LABELS label... [TIMEOUT seconds]
#                  [LAUNCHER program argument...])
# One test program, run offscreen in a fixed locale and time zone. Labels: unit, gui, integration;
# threads marks what the thread sanitizer runs. The launcher is given the test's command line.
set(NETINFO_TEST_ENVIRONMENT
    QT_QPA_PLATFORM=offscreen
    LC_ALL=C.UTF-8
    TZ=UTC
    "ASAN_OPTIONS=detect_stack_use_after_return=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
    "TSAN_OPTIONS=ignore_noninstrumented_modules=1")

# In later Qt 6 the QTRY_ macros put a count of milliseconds into an int, at the place of their use.
add_library(netinfo_test_flags INTERFACE)
if(NETINFO_QT EQUAL 6 AND Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
  target_compile_options(netinfo_test_flags INTERFACE -Wno-conversion)
endif()

add_custom_target(tests_threads) # what the thread sanitizer needs, and nothing else

function(netinfo_add_test name)
  cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBS;LABELS;LAUNCHER" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  add_executable(${name} ${arg_SOURCES})
  netinfo_target(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} Qt::Test netinfo_test_flags)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(tests_threads ${name})
  endif()
  add_test(NAME ${name} COMMAND ${arg_LAUNCHER} $<TARGET_FILE:${name}>)
  set_tests_properties(
    ${name} PROPERTIES ENVIRONMENT "${NETINFO_TEST_ENVIRONMENT}" LABELS "${arg_LABELS}"
                       TIMEOUT ${arg_TIMEOUT} SKIP_RETURN_CODE 77)
endfunction()
