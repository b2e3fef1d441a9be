#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/output/survey_output.h"

namespace kiv {

/// What the user wants surveyed.
struct SurveyOptions {
  std::vector<std::string> folders;
  SurveyFormat format = SurveyFormat::table;
  bool quiet = false;      ///< no progress
  unsigned jobs = 0;       ///< pieces analyzed at once; 0 is one for every processor core
  bool keepGoing = false;  ///< skip pages that the analysis of their piece would end over
  bool exitCode = false;   ///< end with a status of its own when a piece needs a conversion or is bad
  std::string resume;      ///< the file that keeps finished pieces; "" for none
  std::string html;        ///< the page of the library to write; "" for none
  std::string reports;     ///< the folder of a report for each piece; "" for none
};

/// Analyzes every piece in the folders and below, and prints a line for each, in their order. Returns the program's
/// exit status; 130 when it was interrupted.
int runSurvey(const SurveyOptions& options);

}  // namespace kiv
