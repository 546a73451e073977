# netinfo_add_test(NAME SOURCES file... LIBS target... LABELS label... [TIMEOUT seconds]
#                  [LAUNCHER program argument...])
# One test program, run offscreen in a fixed locale and time zone. Labels: unit, gui, integration;
# threads marks what the thread sanitizer runs. The launcher is given the test's command line.
# For the thread sanitizer: test networks are made in forked children, and a race shall end the program.
set(NETINFO_TEST_ENVIRONMENT
    QT_QPA_PLATFORM=offscreen
    LC_ALL=C.UTF-8
    TZ=UTC
    "ASAN_OPTIONS=detect_stack_use_after_return=1"
    "UBSAN_OPTIONS=print_stacktrace=1"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
    "TSAN_OPTIONS=ignore_noninstrumented_modules=1:die_after_fork=0:halt_on_error=1")

# In later Qt 6 the QTRY_ macros put a count of milliseconds into an int, at the place of their use.
add_library(netinfo_test_flags INTERFACE)
if(NETINFO_QT EQUAL 6 AND Qt6_VERSION VERSION_GREATER_EQUAL 6.7)
  target_compile_options(netinfo_test_flags INTERFACE -Wno-conversion)
endif()

# Reading Qt's headers is most of the time that a test takes to compile. Two sets, because a set serves
# only those who see the same of Qt.
option(NETINFO_PCH "Precompile Qt's headers for the tests; hides missing includes" OFF)
if(NETINFO_PCH)
  foreach(set core widgets)
    # A program as the tests are, so that it is compiled with the same flags.
    add_executable(netinfo_pch_${set} "${CMAKE_CURRENT_LIST_DIR}/precompiled.cpp")
    netinfo_target(netinfo_pch_${set})
    set_target_properties(netinfo_pch_${set} PROPERTIES AUTOMOC OFF)
    target_link_libraries(netinfo_pch_${set} PRIVATE netinfo_test_flags)
  endforeach()
  # Without QtTest, which knows each test's folder.
  target_link_libraries(netinfo_pch_core PRIVATE Qt::Core)
  target_precompile_headers(netinfo_pch_core PRIVATE <QtCore>)
  target_link_libraries(netinfo_pch_widgets PRIVATE Qt::Widgets)
  target_precompile_headers(netinfo_pch_widgets PRIVATE <QtWidgets>)
endif()

# Whether one of the libraries is that one, or links it.
function(netinfo_links result wanted)
  set(${result} OFF PARENT_SCOPE)
  foreach(library IN LISTS ARGN)
    set(found OFF)
    if(library STREQUAL wanted)
      set(found ON)
    elseif(TARGET ${library} AND NOT library MATCHES "::")
      get_target_property(linked ${library} INTERFACE_LINK_LIBRARIES)
      netinfo_links(found ${wanted} ${linked})
    endif()
    if(found)
      set(${result} ON PARENT_SCOPE)
      return()
    endif()
  endforeach()
endfunction()

function(netinfo_precompile name)
  netinfo_links(widgets Qt::Widgets ${ARGN})
  netinfo_links(gui Qt::Gui ${ARGN})
  if(widgets)
    target_precompile_headers(${name} REUSE_FROM netinfo_pch_widgets)
  elseif(NOT gui)
    target_precompile_headers(${name} REUSE_FROM netinfo_pch_core)
  endif()
endfunction()

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
  if(NETINFO_PCH)
    netinfo_precompile(${name} ${arg_LIBS})
  endif()
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(tests_threads ${name})
  endif()
  add_test(NAME ${name} COMMAND ${arg_LAUNCHER} $<TARGET_FILE:${name}>)
  set_tests_properties(
    ${name} PROPERTIES ENVIRONMENT "${NETINFO_TEST_ENVIRONMENT}" LABELS "${arg_LABELS}"
                       TIMEOUT ${arg_TIMEOUT} SKIP_RETURN_CODE 77)
endfunction()
