#pragma once

#include <string_view>

namespace kiv {

/// What a command writes into a file that the user names.
enum class OutputKind { drawing, manifest, page, corrections, htmlReport };

/// Whether a file of that kind begins like this.
bool isOfKind(std::string_view content, OutputKind kind);

/// Whether the bytes are a page: a walk over its items comes to their end.
bool isPage(std::string_view content);

}  // namespace kiv
