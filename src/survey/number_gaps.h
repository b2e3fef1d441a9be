#pragma once

#include <string>
#include <vector>

#include "platform/machine.h"

namespace kiv {

/// Where numbers of pages are missing between two page files that follow each other, in words: "no page 2 between
/// MISS001.MUS and MISS003A.MUS". The files are in the order of the run; names may have folders.
std::vector<std::string> numberGaps(Machine& machine, const std::vector<std::string>& files);

}  // namespace kiv
