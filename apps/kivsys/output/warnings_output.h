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

/// One of them as a problem of the severity "warning", which is about no message of the run and has a text of its own.
/// The paths are those of its files.
Json jsonOf(const Warnings& warnings, const Problem& problem, const FilePaths& paths);

/// The problems of the messages and then the warnings. What is given must outlive it.
AddElements elementsOf(const std::vector<Problem>& problems, const Warnings& warnings, const FilePaths& paths);

}  // namespace kiv
