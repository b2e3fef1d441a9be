#pragma once

#include <functional>
#include <string>

#include "messages/message.h"

namespace kiv {

/// The name that users know a file by, which the core names.
using FileNamer = std::function<std::string(const std::string& coreName)>;

/// The text of a message as one line of a console, without what makes sense in a box only, and without the file and the
/// item of its location, which the line begins with. Other files have the names that users know.
std::string consoleSentence(const Message& message, const FileNamer& nameOf);

/// Whether the run continues after the message without an answer.
bool isNote(const Message& message);

}  // namespace kiv
