#pragma once

#include <memory>
#include <string>

#include "platform/host.h"

namespace kiv {

/// The file, open for reading; null where FileExists is false.
std::unique_ptr<InputFile> openExisting(Host& host, const std::string& filename);

/// True when the file can be opened for reading. False, without a look at the disk, for a name that holds two
/// backslashes in a row: network paths are refused.
bool FileExists(Host& host, const std::string& filename);

/// Shows a text file and returns when the person is done with it. The viewer is Notepad, where the host has none of
/// its own.
void ViewFile(Host& host, const std::string& s);

}  // namespace kiv
