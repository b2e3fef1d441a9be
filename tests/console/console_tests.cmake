# Tests that run the real console program.
if(NOT WIN32)
  kiv_bare_test_program(console
    console/analyze_test.cpp
    console/backslash_names_test.cpp
    console/convert_failures_test.cpp
    console/convert_json_test.cpp
    console/convert_options_test.cpp
    console/convert_test.cpp
    console/corrected_reading_test.cpp
    console/documented_options_test.cpp
    console/documents_test.cpp
    console/dry_run_refusals_test.cpp
    console/dry_run_test.cpp
    console/error_lines_test.cpp
    console/example_pages.cpp
    console/example_test.cpp
    console/everyday_mistakes_test.cpp
    console/exit_status_test.cpp
    console/explain_test.cpp
    console/fit_marks_test.cpp
    console/fit_step_test.cpp
    console/fit_test.cpp
    console/fix_in_place_test.cpp
    console/folder_lock_test.cpp
    console/fix_test.cpp
    console/hostile_names_test.cpp
    console/instruments_test.cpp
    console/json_schema.cpp
    console/json_test.cpp
    console/keep_going_test.cpp
    console/large_files_test.cpp
    console/listed_conversion_test.cpp
    console/latecomers_test.cpp
    console/man_and_completions_test.cpp
    console/manners_test.cpp
    console/missing_folders_test.cpp
    console/mistaken_pages_test.cpp
    console/next_in_json_test.cpp
    console/next_step_test.cpp
    console/next_results_test.cpp
    console/old_results_test.cpp
    console/page_arguments_test.cpp
    console/page_commands_test.cpp
    console/pictures_test.cpp
    console/quiet_test.cpp
    console/read_back_test.cpp
    console/recover_test.cpp
    console/renumber_test.cpp
    console/report_corrections_test.cpp
    console/report_results_test.cpp
    console/report_steps_test.cpp
    console/report_test.cpp
    console/run_program.cpp
    console/running_program.cpp
    console/result_folders_test.cpp
    console/safe_inputs_test.cpp
    console/safe_outputs_test.cpp
    console/safe_results_test.cpp
    console/safe_selection_test.cpp
    console/signals_test.cpp
    console/sort_test.cpp
    console/stopped_parts_test.cpp
    console/stopped_undo_test.cpp
    console/suggest_test.cpp
    console/survey_bad_pages_test.cpp
    console/survey_command_test.cpp
    console/survey_html_test.cpp
    console/survey_manners_test.cpp
    console/survey_state_test.cpp
    console/trace_test.cpp
    console/undo_journals_test.cpp
    console/undo_reasons_test.cpp
    console/undo_test.cpp
    console/usage_test.cpp
    console/verify_test.cpp
    console/walk_through_test.cpp
    console/warnings_test.cpp)
  if(KIV_SANITIZE)
    # The program itself is watched; its tests are built in half the time when they are not.
    target_compile_options(test_console PRIVATE -fno-sanitize=address,undefined)
  endif()
  target_precompile_headers(test_console PRIVATE <gtest/gtest.h> <nlohmann/json.hpp>)
  target_link_libraries(test_console PRIVATE kiv_headers kiv_drawing)
  target_compile_definitions(test_console PRIVATE KIVSYS_PROGRAM="$<TARGET_FILE:kivsys>"
    KIVSYS_IS_SANITIZED=$<BOOL:${KIV_SANITIZE}>
    CODES_HEADER="${PROJECT_SOURCE_DIR}/src/messages/codes.h"
    DOCS_FOLDER="${PROJECT_SOURCE_DIR}/docs"
    EXAMPLE_FOLDER="${PROJECT_SOURCE_DIR}/examples/beethoven-9")
  add_dependencies(test_console kivsys)
endif()

# Whole runs over generated groups.
if(NOT WIN32)
  kiv_test_program(console_groups console/corrected_groups_test.cpp console/json_schema.cpp console/run_program.cpp)
  target_link_libraries(test_console_groups PRIVATE kiv_test_groups kiv_headers)
  target_compile_definitions(test_console_groups PRIVATE KIVSYS_PROGRAM="$<TARGET_FILE:kivsys>"
    KIVSYS_IS_SANITIZED=$<BOOL:${KIV_SANITIZE}> DOCS_FOLDER="${PROJECT_SOURCE_DIR}/docs"
    EXAMPLE_FOLDER="${PROJECT_SOURCE_DIR}/examples/beethoven-9")
  add_dependencies(test_console_groups kivsys)
endif()

# Parts of the console program, without running it.
if(NOT WIN32)
  kiv_bare_test_program(console_parts
    console/file_kinds_test.cpp
    console/instrument_cells_test.cpp
    console/journal_text_test.cpp
    console/json_text_test.cpp
    console/names_list_test.cpp
    console/natural_order_test.cpp
    console/nearest_word_test.cpp
    console/output_file_test.cpp
    ../apps/kivsys/output/diagnostics_json.cpp
    ../apps/kivsys/output/instruments_output.cpp
    ../apps/kivsys/output/json_text.cpp
    ../apps/kivsys/output/json_value.cpp
    ../apps/kivsys/output/outcome_json.cpp
    ../apps/kivsys/output/print_outcome.cpp
    ../apps/kivsys/output/text_table.cpp ../apps/kivsys/output/verification_json.cpp
    ../apps/kivsys/safety/file_kinds.cpp ../apps/kivsys/safety/input_files.cpp
    ../apps/kivsys/safety/output_file.cpp
    ../apps/kivsys/selection/names_list.cpp
    ../apps/kivsys/selection/natural_order.cpp
    ../apps/kivsys/undo/journal_text.cpp
    ../apps/kivsys/usage/nearest_word.cpp)
  target_link_libraries(test_console_parts PRIVATE kiv_console kiv_diagnostics kiv_headers kiv_verify)
endif()

if(WIN32)
  set(CMAKE_UNITY_BUILD OFF)  # names of the system's headers clash
  add_subdirectory(window)
  add_subdirectory(package)
endif()

if(NOT WIN32)
  # Half of the tests run beside the other half; counts of results know both names.
  add_test(NAME console_half COMMAND test_console --gtest_brief=1
    --gtest_output=xml:${CMAKE_BINARY_DIR}/results/console_half.xml)
  set_tests_properties(console PROPERTIES ENVIRONMENT "GTEST_TOTAL_SHARDS=2;GTEST_SHARD_INDEX=0")
  set_tests_properties(console_half PROPERTIES ENVIRONMENT "GTEST_TOTAL_SHARDS=2;GTEST_SHARD_INDEX=1" TIMEOUT 900)
  # The longest first, so that none of them is left alone at the end.
  set_tests_properties(console console_half PROPERTIES COST 40)
  set_tests_properties(mus repair verify_properties shell PROPERTIES COST 20)
endif()
