#pragma once

#include <string>

#include "messages/message.h"

namespace kiv::messages {

// What the start of the program, the panel and the programs that it starts say.

/// Critical: the command line is none that the program knows.
Message invalidCall(const std::string& commandLine);
/// Critical: the project's settings file.
Message settingsFileNotOpened(const std::string& file);
/// Critical: a module that the panel starts is not there.
Message moduleMissing(const std::string& module);
/// A drop of files that failed; the number says why.
Message dropError(int number);
Message folderModuleMissing();
Message folderAnswerNotRead();
/// A program that did not start, or ended with -1.
Message programNotStarted(const std::string& commandLine);
/// Critical: a command that names neither a program nor a batch file.
Message notACommand(const std::string& command);

/// The report about a group that the panel cannot show in the browser: a page that cannot be read, or the report's own
/// file.
Message reportNotShown(const std::string& file, const std::string& reason);

}  // namespace kiv::messages
