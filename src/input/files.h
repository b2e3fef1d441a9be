#pragma once

#include <memory>
#include <string>

#include "platform/host.h"

namespace kiv {

/// The file, open for reading; null where FileExists is false.
std::unique_ptr<InputFile> openExisting(Files& files, Machine& machine, const std::string& filename);

/// Whether openExisting will open the file, as far as Files::willOpen knows.
bool existingWillOpen(Files& files, Machine& machine, const std::string& filename, Fetch fetch);

/// True when the file can be opened for reading. False, without a look at the disk, for a name that holds two
/// backslashes in a row: network paths are refused.
bool FileExists(const Host& host, const std::string& filename);

/// Shows a text file and returns when the user has closed it. The viewer is Notepad, where the user interface has none.
void ViewFile(const Host& host, const std::string& s);

}  // namespace kiv
