#pragma once

#include <string>

#include "messages/console_words.h"

namespace kiv {

/// Whether what to do next follows a message.
enum class NextLine { shown, hidden };

/// A message as users of the console read it: "kivsys: FILE: item 3: text", without the words that make sense in a box
/// only, and what to do next on a second line, if that is known. Ends with a line end; "" when there is nothing to say.
/// The second namer gives the path under which the disk has a file, from whatever folder. After a file that could not
/// be written, the line has its folder and the reason, "/music: Permission denied".
std::string consoleLines(const Message& message, const FileNamer& nameOf, const FileNamer& pathOf,
                         const std::string& writeFailure = "", NextLine next = NextLine::shown);

/// The file of a message.
struct MessageFile {
  std::string name;  ///< by which the user knows it
  std::string path;  ///< under which the disk has it, from whatever folder
};

/// The command line that helps after a message about a page; "" when none does, or none can be shown on one line.
std::string commandAfter(const Message& message, const MessageFile& file);

/// What the file is that a message about a damaged page is about, where it never was a page: "this is the text of a
/// page, not a page"; else "".
std::string mistakenWords(const Message& message, const MessageFile& file);

}  // namespace kiv
