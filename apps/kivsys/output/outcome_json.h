#pragma once

#include <string>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/output/json_text.h"
#include "messages/message.h"

namespace kiv {

/// What docs/json-schema.json describes; raised when a key is removed or changes its meaning.
constexpr int schemaVersion = 2;

/// "information", "exclamation", "critical" or "none".
const char* nameOf(Icon icon);

/// The messages of a run, in order.
Json jsonOf(const std::vector<ShownMessage>& messages);

/// The outcome, which must outlive the object, without the schema's version.
LongObject jsonOf(const RunOutcome& outcome);

/// The tables of corrections with which the pages were read, and how much they change.
Json jsonOf(const PageCorrections& corrections);

/// Names of the core with the paths of their files.
Json pathsJson(const std::vector<FoundFile>& files);

/// The object in UTF-8 on a line of its own.
std::string asLine(const Json& object);

/// The texts as a list.
Json textsJson(const std::vector<std::string>& texts);

}  // namespace kiv
