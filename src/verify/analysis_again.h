#pragma once

#include <string>

#include "platform/host.h"
#include "verify/verify.h"

namespace kiv::proof {

/// Analyses the pages of a names file as they lie on the disk, without leaving a trace there or showing a message.
AnalysisAgain analyseAgain(Host& disk, const std::string& namesFile);

}  // namespace kiv::proof
