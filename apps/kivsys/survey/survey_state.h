#pragma once

#include <fstream>
#include <map>
#include <optional>
#include <string>

#include "apps/kivsys/survey/library_walk.h"
#include "platform/console/console_host.h"
#include "survey/survey.h"

namespace kiv {

/// The file in which a survey keeps the pieces that it has finished, one JSON object a line, each with the stamp of its
/// pages. A line that a run was stopped in is as if it were not there.
class SurveyState {
 public:
  /// Reads the file, named as the user typed it, and makes it ready for more. Returns why that fails, in words; "" when
  /// it does not. Without a call nothing is known and nothing kept.
  std::string open(ConsoleHost& host, const std::string& file);

  /// What an earlier run has found out about the piece; nullopt when it has not, or the piece has changed.
  std::optional<PieceFindings> find(const LibraryPiece& piece) const;
  /// Keeps a finished piece. False when it cannot be written.
  bool keep(const LibraryPiece& piece, const PieceFindings& findings);

 private:
  struct Known {
    std::string stamp;
    PieceFindings findings;
  };
  void takeLine(const std::string& line, std::string& goodLines);

  std::map<std::string, Known> known_;  // by the piece's key
  std::ofstream file_;
};

}  // namespace kiv
