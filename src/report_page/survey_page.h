#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kiv::report {

enum class PieceVerdict { usable, needsConversion, hasProblems, unreadable };

/// A row of a survey's page. All texts are UTF-8 that may be shown as it stands.
struct SurveyRow {
  std::string folder;
  std::string prefix;
  std::size_t pages = 0;
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  PieceVerdict verdict = PieceVerdict::usable;
  std::vector<std::string> problems;
  std::vector<std::string> map;  ///< as SmallMap has it
  std::string link;              ///< of the report, relative to the page and encoded; "" without one
};

struct SurveyData {
  std::string title;  ///< the folders
  std::string made;
  bool interrupted = false;  ///< some pieces are missing
  std::vector<SurveyRow> rows;
};

/// The library as one page that needs nothing but itself and the reports that it links.
std::string surveyPage(const SurveyData& data);

/// A path with slashes as the link of a page has it.
std::string encodedLink(const std::string& path);

}  // namespace kiv::report
