#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "platform/win32/handle.h"

namespace kiv {

/// Null unless the name is a readable file. Devices and folders are none.
std::unique_ptr<InputFile> openForReading(const std::string& name);
/// Opens the file empty. Null when it cannot be written.
std::unique_ptr<OutputFile> openForWriting(const std::string& name);
/// What an open file or folder is; nullopt when the system does not say.
std::optional<FileStamp> stampOfHandle(HANDLE file);
/// Writes all bytes. Returns the failure's text.
std::optional<std::string> writeAll(const Handle& file, std::string_view bytes);
/// Writes the bytes beside the target and then moves them to its place: at every moment the old or the new file is
/// there completely. Until then, its name has the mark in it, or the number of the process if that is empty.
std::optional<std::string> replaceWhole(const std::string& target, const std::string& mark, std::string_view bytes);
/// The same where there is no file yet: one that is there stays, and this fails.
std::optional<std::string> createWhole(const std::string& target, const std::string& mark, std::string_view bytes);
/// The entries of a folder whose names match the pattern after its last backslash, as the system lists them.
std::vector<FolderEntry> entriesMatching(const std::string& pattern);

}  // namespace kiv
