# An independent reader looks at the file that test_skindata leaves in its working folder.
find_program(TAVIX_SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH)
if(NOT TAVIX_SYSTEM_PYTHON)
  message(FATAL_ERROR "python3 with olefile is missing: run './run setup'")
endif()
set_tests_properties(skindata PROPERTIES FIXTURES_SETUP skin_sample)
add_test(NAME skindata_independent_reader
  COMMAND ${TAVIX_SYSTEM_PYTHON} ${CMAKE_CURRENT_LIST_DIR}/check_with_olefile.py ${CMAKE_CURRENT_BINARY_DIR})
set_tests_properties(skindata_independent_reader PROPERTIES FIXTURES_REQUIRED skin_sample)
