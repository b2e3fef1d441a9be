#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diagnostics/page_lookup.h"
#include "diagnostics/problems.h"
#include "diagnostics/system_facts.h"

namespace kiv {

/// The systems of a report, found by the page files that their staves are in.
struct SystemsByFile {
  explicit SystemsByFile(std::vector<SystemFact> facts);

  std::vector<SystemFact> systems;
  std::unordered_map<std::string, std::vector<std::size_t>> places;  ///< in systems, each once, in their order
};

/// A page with problems, and its systems.
struct PageFacts {
  std::vector<std::string> files;  ///< full names in the order in which an analysis reads them
  std::vector<const SystemFact*> systems;
  const PageProblems* problems = nullptr;
};

/// The files of a page in the order in which an analysis reads them, the top one last. musFileName is that of a page of
/// one file.
std::vector<std::string> filesOf(Host& host, const PageEntry& page, const std::string& musFileName);

/// Whether the letters of a page are A, B, C ...
bool hasUsualLetters(const PageEntry& page);

/// The codes of the messages that an analysis shows about a page, in their order.
std::vector<std::string_view> shownCodes(const PageProblems& problems, bool allowZeroInstrId);

/// The facts of a page. The page and the report must outlive them.
PageFacts factsOf(Host& host, const FindingsLog::Page& page, const SystemsByFile& report);

/// A copy of the problem for every place on the page that it is about.
std::vector<Problem> placesOf(const Problem& problem, const PageFacts& facts, PageLookup& pages);

}  // namespace kiv
