#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/kivsys/survey/library_walk.h"
#include "apps/kivsys/survey/state_text.h"
#include "platform/locked_file.h"
#include "survey/survey.h"

namespace kiv {

/// Why a state file cannot be used.
struct StateRefusal {
  int status = 0;      ///< the exit status that this gives
  std::string reason;  ///< with the name of the file
};

/// The file in which a survey keeps the pieces that it has finished. One survey at a time has it, and it belongs to the
/// folders that it was begun for. An incomplete line at its end, left by a run that was stopped, is cut off.
class SurveyState {
 public:
  /// Opens the file, named as the user typed it, for a survey of these folders. A file that is not a state, or not of
  /// these folders, stays as it is. Without a call nothing is known and nothing kept.
  std::optional<StateRefusal> open(const std::string& file, const std::vector<std::string>& folders);

  /// The findings of an earlier run; nullopt when there are none, or the piece has changed.
  std::optional<PieceFindings> find(const LibraryPiece& piece) const;
  /// Keeps a finished piece. False when it cannot be written.
  bool keep(const LibraryPiece& piece, const PieceFindings& findings);
  /// Waits until all that is kept is on the disk. False when that fails.
  bool flush();
  /// The system's words for the last failure.
  const std::string& failure() const { return file_.failure(); }

 private:
  std::optional<StateRefusal> load(const std::string& file, const std::vector<std::string>& roots);

  std::map<std::string, StateEntry> known_;  // by the piece's key
  LockedFile file_;
  bool isOpen_ = false;
  std::chrono::steady_clock::time_point flushed_{};
};

}  // namespace kiv
