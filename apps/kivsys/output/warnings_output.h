#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/problems.h"
#include "messages/message.h"
#include "platform/console/message_words.h"

namespace kiv {

/// What a run loses and no message of the run says; only the console program shows it.
struct Warnings {
  std::vector<Message> messages;
  std::vector<Problem> problems;  ///< of the messages; filled for output as JSON only
};

/// A line for each: "kivsys: X1.MUS: item 3: warning: ... (system 2)", and on request the code: " [bar-two-rests]"
std::string asText(const Warnings& warnings, const FileNamer& nameOf, bool withCodes = false);

/// Each as a problem of the severity "warning", which is about no message of the run and has a text of its own.
/// The paths are those of its files.
std::vector<Json> jsonOf(const Warnings& warnings, const std::vector<FoundFile>& paths);

/// The problems of the messages and then the warnings, as one array.
Json jsonOf(const std::vector<Problem>& problems, const Warnings& warnings, const std::vector<FoundFile>& paths);

}  // namespace kiv
