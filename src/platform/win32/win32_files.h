#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "platform/win32/handle.h"

namespace kiv {

/// Null when the name is no file that can be read. Devices and folders are none.
std::unique_ptr<InputFile> openForReading(const std::string& name);
/// Null when the name is no file that can be written; otherwise it is empty now.
std::unique_ptr<OutputFile> openForWriting(const std::string& name);
/// Writes all bytes; the failure's text when the medium does not take them.
std::optional<std::string> writeAll(const Handle& file, std::string_view bytes);
/// Writes the bytes beside the target and then puts them in its place, old or new one whole at every moment.
std::optional<std::string> replaceWhole(const std::string& target, std::string_view bytes);
/// The entries of a folder whose names match the pattern behind its last backslash, as the system lists them.
std::vector<FolderEntry> entriesMatching(const std::string& pattern);

}  // namespace kiv
