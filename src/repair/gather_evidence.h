#pragma once

#include "diagnostics/group_facts.h"
#include "platform/files.h"
#include "repair/group_evidence.h"

namespace kiv {

/// The evidence of the group that the facts are about. Reads each page file once more. Never ends the program: of a
/// page that cannot be read only what the facts say about it is known.
GroupEvidence gatherEvidence(Files& files, const GroupFacts& facts);

}  // namespace kiv
