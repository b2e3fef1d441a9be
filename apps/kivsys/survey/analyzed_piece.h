#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/console/native_system.h"
#include "survey/survey.h"

namespace kiv {

/// What a survey says that ran out of memory.
inline constexpr std::string_view outOfMemory = "out of memory";

/// The analysis of a piece, in UTF-8, and what the system did not have for it: memory or open files. "" when it had
/// all.
struct Analyzed {
  PieceFindings findings;
  std::string lack;
};

/// Analyzes the piece of these pages. One that takes more memory or open files than there are has that as its only
/// problem.
Analyzed analyzePiece(NativeSystem& system, const std::vector<std::string>& pages, BadPages badPages);

}  // namespace kiv
