#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The paths of a list that has a comma after each of them. Names may hold commas: a path ends only at a comma after
/// which the list ends or another full path begins, with a drive or with two backslashes. Neither can be inside a path,
/// so there is only one way to split. nullopt when the last comma is missing, as in a list that was cut off.
std::optional<std::vector<std::string>> splitDropList(std::string_view list);

/// Whether the file has the type for its suffix; case is ignored in the letters A to Z.
bool hasType(std::string_view path, std::string_view type);

}  // namespace kiv
