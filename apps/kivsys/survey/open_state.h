#pragma once

#include <optional>

#include "apps/kivsys/commands/survey_command.h"
#include "apps/kivsys/survey/survey_state.h"
#include "platform/console/console_system.h"
#include "survey/survey.h"

namespace kiv {

/// Opens the file of the state, which is none of the pages. Returns why it cannot be used.
std::optional<StateRefusal> openState(ConsoleSystem& system, const SurveyOptions& options, const Library& library,
                                      SurveyState& state);

}  // namespace kiv
