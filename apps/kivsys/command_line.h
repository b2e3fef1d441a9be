#pragma once

#include <memory>
#include <string>

#include "apps/kivsys/analyze_command.h"
#include "apps/kivsys/chart_command.h"
#include "apps/kivsys/convert_command.h"
#include "apps/kivsys/documents_command.h"
#include "apps/kivsys/draw_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/page_commands.h"
#include "apps/kivsys/sort_command.h"
#include "apps/kivsys/survey_command.h"
#include "apps/kivsys/verify_command.h"

namespace CLI {
class App;
}

namespace kiv {

/// What a command line has asked for, and how that ended.
struct CommandLine {
  AnalyzeOptions analyze;
  ConvertOptions convert;
  VerifyOptions verify;
  SurveyOptions survey;
  ConvertOptions trace;
  SortOptions sort;
  DrawOptions draw;
  ChartOptions chart;
  PageFiles files;
  std::string shell;                 ///< whose completions are wanted
  int status = exit_status::normal;  ///< of the command that was run
};

/// Makes the table of all commands, their options and help. When it parses a command line, the command is run; what it
/// parses goes into the given struct, which has to live as long.
std::shared_ptr<CLI::App> makeApp(CommandLine& line);

}  // namespace kiv
