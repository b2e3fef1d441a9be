#pragma once

#include <fstream>
#include <map>
#include <optional>
#include <string>

#include "apps/kivsys/survey/library_walk.h"
#include "platform/console/native_system.h"
#include "survey/survey.h"

namespace kiv {

/// The file in which a survey keeps the pieces that it has finished, one JSON object a line, each with the stamp of its
/// pages. An incomplete line, left by a run that was stopped, is ignored.
class SurveyState {
 public:
  /// Reads the file, named as the user typed it, and prepares it for more lines. Returns the reason when that fails,
  /// else "". Without a call nothing is known and nothing kept. The system must outlive this object.
  std::string open(NativeSystem& system, const std::string& file);

  /// The findings of an earlier run; nullopt when there are none, or the piece has changed.
  std::optional<PieceFindings> find(const LibraryPiece& piece) const;
  /// Keeps a finished piece. False when it cannot be written.
  bool keep(const LibraryPiece& piece, const PieceFindings& findings);
  /// Waits until all that is kept is on the disk. False when that fails.
  bool flush();

 private:
  struct Known {
    std::string stamp;
    PieceFindings findings;
  };
  void addLine(const std::string& line, std::string& goodLines);

  std::map<std::string, Known> known_;  // by the piece's key
  std::ofstream file_;
  NativeSystem* system_ = nullptr;
  std::string name_;  // of the file, as the core writes names
};

}  // namespace kiv
