#include "platform/console/message_words.h"

#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

std::string nextLine(const Message& message, const std::string& file) {
  const std::string command = commandAfter(message, file);
  return command.empty() ? "" : "Next: " + command + "\n";
}

/// Messages of which the console prints the facts elsewhere.
bool isSilent(const Message& message) {
  return message.code == code::sortFinished;
}

}  // namespace

std::string commandAfter(const Message& message, const std::string& file) {
  const bool isOneLine = printable(file) == file;
  if (file.empty() || file == "-" || !isOneLine) {
    return "";
  }
  const bool isOfItem = message.location.item > 0;
  if (message.code == code::structureError || message.code == code::tooManyItems ||
      (message.code == code::subscriptOutOfRange && isOfItem)) {
    return "kivsys recover " + fileWord(file);
  }
  if (message.code == code::systemBarline) {
    return "kivsys draw " + fileWord(file) + " --out " + fileWord(file.substr(0, file.rfind('.')) + ".svg");
  }
  return "";
}

std::string consoleLines(const Message& message, const FileNamer& nameOf, const FileNamer& pathOf) {
  if (isSilent(message)) {
    return "";
  }
  const Location& location = message.location;
  const std::string file = location.file.empty() ? "" : nameOf(location.file);
  if (message.code == code::namesFileMissing && !file.empty()) {
    const auto failure = readFailure(pathOf(location.file));
    const auto reason = failure ? failure : readFailure(file);  // it may be refused for its name alone
    return "kivsys: cannot read " + printable(file) + (reason ? ": " + *reason : "") + "\n";
  }
  std::string line = "kivsys: ";
  line += file.empty() ? "" : printable(file) + ": ";
  line += location.item == 0 ? "" : "item " + std::to_string(location.item) + ": ";
  line += isNote(message) ? "note: " : "";
  const FileNamer printableName = [&](const std::string& name) { return printable(nameOf(name)); };
  return line + printable(consoleSentence(message, printableName)) + "\n" + nextLine(message, file);
}

}  // namespace kiv
