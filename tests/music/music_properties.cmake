# Scores whose rest staves are known.
add_library(kiv_test_scores STATIC music/score.cpp music/score_plan.cpp music/score_writer.cpp)
target_link_libraries(kiv_test_scores PUBLIC kiv_test_support rapidcheck PRIVATE kiv_warnings)
kiv_test_program(fit_properties music/fit_properties_test.cpp verify/converted_group.cpp)
target_link_libraries(test_fit_properties PRIVATE kiv_test_scores kiv_music)
# Pieces that say of every bar how long it lasts.
kiv_test_program(orchestra_properties
  music/bar_lengths.cpp
  music/orchestra.cpp
  music/orchestra_errors.cpp
  music/orchestra_plan.cpp
  music/orchestra_properties_test.cpp
  music/orchestra_voices.cpp
  verify/converted_group.cpp)
target_link_libraries(test_orchestra_properties PRIVATE kiv_verify)
