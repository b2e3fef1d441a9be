# Their own names are also those of others.
set_source_files_properties(
  analysis/page_checks_test.cpp
  console/analyze_test.cpp
  console/json_test.cpp
  console/safe_inputs_test.cpp
  console/survey_bad_pages_test.cpp
  console/survey_command_test.cpp
  conversion/conversion_test.cpp
  conversion/nearest_item_test.cpp
  conversion/order_table_test.cpp
  conversion/set_rest_durations_reference_test.cpp
  conversion/set_staff_attributes_reference_test.cpp
  drawing/chart_svg_test.cpp
  faults/memory_faults_test.cpp
  mus/sort_item_table_test.cpp
  mus/writer_round_trip_test.cpp
  mus/writer_test.cpp
  music/music_warnings_test.cpp
  properties/reference_properties_test.cpp
  shell/cmd_run_panel_test.cpp
  shell/panel_layout_test.cpp
  shell/panel_start_test.cpp
  sort/sort_on_instrument_test.cpp
  verify/verify_test.cpp
  PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
