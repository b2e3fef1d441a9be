#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/host.h"

namespace kiv {

/// The value of a key in section [KIV] of the user's profile, at most 31 characters; "" when absent.
std::string GetProfileKey(Machine& machine, const std::string& key);

/// Starts the command line as a process and waits for its end. Returns its exit code. A result of -1, as a program
/// that does not start gives, is reported.
std::int32_t ExecCmd(const Host& host, const std::string& cmdline);

/// Runs a program by its bare file name and with its arguments, as the shell's search rules find it, or a batch file
/// as it stands, and waits for its end. A command that names neither ends the program, as does a failing shell.
void ShellAndWait(const Host& host, const std::string& cmd);

/// The same, but the caller reports the failure of the shell.
[[nodiscard]] std::optional<ShellFailure> tryShellAndWait(const Host& host, const std::string& cmd);

/// The short (8.3) form of the path, or the path as it is when the platform has none.
std::string GetShortName(Files& files, const std::string& path);

/// Folder and long name of the file whose short name the path ends with, in capitals; "" when there is none.
std::string GetLongName(const Host& host, const std::string& path);

}  // namespace kiv
