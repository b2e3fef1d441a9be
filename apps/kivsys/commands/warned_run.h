#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "apps/kivsys/output/warnings_output.h"
#include "diagnostics/warnings.h"
#include "platform/console/console_host.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"

namespace kiv {

/// A run that --strict can refuse.
struct StrictRun {
  bool allowZeroId = false;
  bool converts = false;              ///< pages that do not qualify are converted
  bool force = false;                 ///< and those that do
  std::set<std::int16_t> required{};  ///< instruments that every result gets
};

/// An analysis of the names file in memory. A conversion in memory can follow.
class TriedAnalysis {
 public:
  /// The system must outlive it.
  TriedAnalysis(ConsoleSystem& system, const std::string& namesFile, bool allowZeroId);

  bool endedNormally() const { return endedNormally_; }
  /// Whether it has found a warning or a problem. One that ended early has found none: the run itself shows why.
  bool isRefused(const StrictRun& run);
  KivSystem& program() { return program_; }
  OverlayFiles& files() { return files_; }
  SilentUser& user() { return user_; }
  GroupFacts& facts() { return facts_; }

 private:
  OverlayFiles files_;
  SilentUser user_;
  NoPrograms programs_;
  KivSystem program_;
  GroupFacts facts_;
  bool endedNormally_ = false;
};

/// Whether such an analysis finds a warning or a problem.
bool isRefusedByStrict(ConsoleSystem& system, const std::string& namesFile, const StrictRun& run);

/// Finds what the run after the analysis that has filled the program's tables, observed by the facts, loses, and shows
/// it to the user. The problems are filled in on request.
Warnings showWarnings(ConsoleUser& user, KivSystem& program, GroupFacts& group, const WarnedRun& run,
                      bool withProblems);
/// Shows these warnings to the user. The problems are filled in on request.
Warnings showWarnings(ConsoleUser& user, Files& files, std::vector<Message> messages, bool withProblems);

}  // namespace kiv
