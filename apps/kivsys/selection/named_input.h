#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "mus/format.h"
#include "platform/bounded_file.h"
#include "platform/console/native_system.h"

namespace kiv {

/// The input of this name is standard input.
inline constexpr const char* standardInput = "-";

/// What a command reads from one file.
struct InputKind {
  std::size_t limit;      ///< bytes
  std::string_view what;  ///< in messages
};

inline constexpr InputKind pageInput{readableBytes, "a page"};
inline constexpr InputKind pageTextInput{most_bytes::pageText, "a page text"};

/// The content of an input, or the exit status of a run without it.
struct NamedInput {
  std::optional<std::string> bytes;
  int status = 0;
};

/// Reads the file that was typed, or standard input. When that fails, a line on standard error says why.
NamedInput readNamedInput(NativeSystem& system, const std::string& typed, const InputKind& kind);

}  // namespace kiv
