#pragma once

#include <string>
#include <string_view>

namespace kiv::reference {

/// What the system's walk over a whole page gives, as text: every item with its text and its parameters that are not 0,
/// and how the walk ended.
std::string listWalked(std::string_view file);

/// The same from the reference reader.
std::string listRead(std::string_view file);

}  // namespace kiv::reference
