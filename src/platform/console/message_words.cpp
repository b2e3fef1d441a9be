#include "platform/console/message_words.h"

#include <filesystem>
#include <string_view>

#include "platform/console/printable.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';

std::string nextLine(const Message& message, const std::string& file) {
  const std::string command = nextCommand(message, file);
  return command.empty() ? "" : "Next: " + command + "\n";
}

/// Messages of which the console prints the facts elsewhere.
bool isSilent(const Message& message) {
  return message.code == code::sortFinished;
}

}  // namespace

std::string nextCommand(const Message& message, const std::string& file) {
  const std::string word = shellWord(file);
  if (word.empty() || file == "-") {
    return "";
  }
  const bool isOfItem = message.location.item > 0;
  if (message.code == code::structureError || message.code == code::tooManyItems ||
      (message.code == code::subscriptOutOfRange && isOfItem)) {
    return "kivsys recover " + word;
  }
  if (message.code == code::systemBarline) {
    return "kivsys draw " + word + " --out " + shellWord(file.substr(0, file.rfind('.')) + ".svg");
  }
  return "";
}

std::string shellWord(const std::string& word) {
  constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=:,./\\@%";
  if (word.empty() || printable(word) != word) {
    return "";
  }
  if (isWindows) {
    return word.find_first_not_of(plain) == std::string::npos ? word : "\"" + word + "\"";
  }
  if (word.find_first_not_of(plain.substr(0, plain.find('\\'))) == std::string::npos) {
    return word;
  }
  std::string quoted;
  for (const char c : word) {
    quoted += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return "'" + quoted + "'";
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
