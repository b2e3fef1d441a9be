kiv_core_test(verify
  compare_report_test.cpp
  converted_group.cpp
  derived_analysis_test.cpp
  first_clefs_test.cpp
  group_pages_test.cpp
  manifest_test.cpp
  music_names_test.cpp
  music_pages.cpp
  music_staff_test.cpp
  music_system_test.cpp
  music_time_test.cpp
  nan_items_test.cpp
  numbers_test.cpp
  other_groups_test.cpp
  selected_files_test.cpp
  verify_test.cpp)
target_link_libraries(test_verify PRIVATE kiv_verify)
