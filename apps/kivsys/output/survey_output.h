#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/survey/library_walk.h"
#include "survey/survey.h"

namespace kiv {

enum class SurveyFormat { table, csv, json };

/// The lines of a survey. A table has its columns as wide as the folders and prefixes of the whole library need, so
/// that it can be printed line by line.
class SurveyLines {
 public:
  SurveyLines(SurveyFormat format, const std::vector<LibraryPiece>& pieces);

  std::string head() const;
  std::string line(const LibraryPiece& piece, const PieceFindings& findings);
  /// The end of the output: in a table, the totals of the findings that there are; interrupted says that pieces are
  /// missing.
  std::string end(const std::vector<std::optional<PieceFindings>>& findings, bool interrupted) const;

 private:
  SurveyFormat format_;
  std::size_t folderWidth_ = 0;
  std::size_t prefixWidth_ = 0;
  bool any_ = false;
};

}  // namespace kiv
