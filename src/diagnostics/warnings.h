#pragma once

#include <string>
#include <vector>

#include "messages/message.h"
#include "platform/files.h"

namespace kiv {

/// How far a run goes, as warnings are about what it loses.
enum class RunScope {
  analysis,          ///< of pages that can be used as they are
  beforeConversion,  ///< an analysis of pages that a conversion would have to change
  conversion,
};

/// A run that warnings are about.
struct WarnedRun {
  RunScope scope = RunScope::analysis;
  bool allowsZeroIds = false;  ///< no message says that instrument identifiers are 0
};

/// What a run over pages that an analysis has read loses or changes without a message. The report of that analysis must
/// be in the current folder. Each of the inputs, full names, is read again. Writes and shows nothing. Returns the
/// warnings that concern names and systems, then those of each input.
std::vector<Message> findWarnings(Files& files, const std::vector<std::string>& inputs, const WarnedRun& run);

/// What a run that writes these pages again changes in them by the rules of the format, in their order.
std::vector<Message> findWritingLosses(Files& files, const std::vector<std::string>& inputs);

}  // namespace kiv
