#pragma once

#include <string>
#include <vector>

#include "platform/machine.h"

namespace kiv::proof {

/// A number as a field of the listing: its sign or a blank, its general form, and a blank.
std::string numberField(float number);

/// A comment line of fields. Each after the first begins at the next column of the form 14 n + 1; columns are counted
/// from 1, in characters.
std::string inZones(Machine& machine, const std::vector<std::string>& fields);

}  // namespace kiv::proof
