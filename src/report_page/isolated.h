#pragma once

#include <string>

namespace kiv::report {

/// A name as a part of a sentence: one that is written from right to left, wholly or in part, is isolated, so that it
/// moves nothing around it. The text is UTF-8; other names stay as they are.
std::string isolated(const std::string& name);

}  // namespace kiv::report
