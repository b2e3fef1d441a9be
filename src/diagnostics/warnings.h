#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "diagnostics/group_facts.h"
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
  bool allowsZeroIds = false;         ///< no message says that instrument identifiers are 0
  std::set<std::int16_t> required{};  ///< instruments that every result gets, even those that no page has
};

/// What a run over pages loses or changes without a message. The facts have observed the analysis of these inputs, full
/// names. An input whose losses they do not know is read again. Writes and shows nothing. Returns the warnings that
/// concern names and systems, then those of each input.
std::vector<Message> findWarnings(Files& files, const std::vector<std::string>& inputs, const WarnedRun& run,
                                  GroupFacts& group);

/// The warnings about names alone.
std::vector<Message> findNameWarnings(const std::vector<std::string>& inputs);

/// What a sort of these pages changes in them beside the order of their staves, page by page.
std::vector<Message> findSortingLosses(Files& files, const std::vector<std::string>& inputs);

}  // namespace kiv
