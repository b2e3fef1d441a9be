#pragma once

#include <string>
#include <vector>

#include "repair/suggestions.h"

namespace kiv {

/// The heads of the columns of a table of corrections.
inline constexpr const char* correctionHeads = "file,system,staff,item,what,problem,old_id,new_id,confidence,reason";

/// The columns that say where an id is and what is wrong with it; the first is the name of the file, as it is given.
std::vector<std::string> placeCells(const DoubtfulId& at, const std::string& file);

/// The line of a correction in comma-separated values, with its end. The name of the file and the reason are UTF-8.
std::string correctionLine(const Correction& correction, const std::string& file, const std::string& reason);

}  // namespace kiv
