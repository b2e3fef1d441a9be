#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What a sort has moved in a page, from these bytes to those: "staff 3 is now staff 1, staff 1 is now staff 3", or
/// "already in order".
std::string movedStaves(std::string_view before, std::string_view after);

}  // namespace kiv
