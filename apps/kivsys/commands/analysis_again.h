#pragma once

#include <string>

#include "platform/files.h"
#include "platform/machine.h"
#include "verify/verify.h"

namespace kiv {

/// Analyzes the pages of a names file as they are on the disk, without writing there or showing a message.
proof::AnalysisAgain analyzeAgain(Files& disk, Machine& machine, const std::string& namesFile);

}  // namespace kiv
