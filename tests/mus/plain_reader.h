#pragma once

#include <string>
#include <string_view>

namespace kiv::test {

/// What a walk over the whole page gives, as text: every item with its parameters that are not 0 and its text, and how
/// it ended.
std::string walkedThrough(std::string_view file);

/// The same from a reader that takes one word after the other and does the plain thing with each. The walk is held
/// against it.
std::string readPlainly(std::string_view file);

}  // namespace kiv::test
