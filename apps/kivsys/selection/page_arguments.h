#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/console/console_system.h"

namespace kiv {

/// The page files that an argument means, as they are typed: itself, all pages of a folder, or, where the shell leaves
/// that to the program, those that match a pattern. A text says why it means none.
/// What a folder has that looks like pages and is none, recovered pages beside the damaged ones and results, is added
/// to what is left out, a sentence each.
std::variant<std::vector<std::string>, std::string> pagesMeantBy(ConsoleSystem& system, const std::string& argument,
                                                                 std::vector<std::string>& leftOut);

/// Why these arguments cannot be the pages of one run: they are several folders; nullopt when they are not.
std::optional<std::string> whyNotOneFolder(ConsoleSystem& system, const std::vector<std::string>& arguments);

/// Why the file that was typed, with this path on the disk, cannot be read; nullopt when it can be. A pattern that
/// matched nothing is called so.
std::optional<std::string> whyUnreadable(const std::string& typed, const std::string& path);

/// Why a file or folder that was typed cannot be used: the core cannot name it. "what" is what messages call it;
/// nullopt when it can be.
std::optional<std::string> refusalOfName(const std::string& typed, const std::string& what);
/// The same, as the system knows the folder of what was typed.
std::optional<std::string> refusalOfName(NativeSystem& system, const std::string& typed, const std::string& what);
/// The same for one that is to be written, and need not be there yet.
std::optional<std::string> refusalOfNewName(const std::string& typed, const std::string& what);

}  // namespace kiv
