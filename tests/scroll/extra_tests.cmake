# A module whose import table is watched: the tests load it, and copies of it, in every way.
add_library(scroll_client SHARED ${CMAKE_CURRENT_LIST_DIR}/client/scroll_client.cpp)
target_link_libraries(scroll_client PRIVATE tavix_rules user32)
set_target_properties(scroll_client PROPERTIES PREFIX "")
add_dependencies(test_scroll scroll_client)
