#include "platform/console/message_words.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
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

/// Why a file could not be written, where that is not in the message, and how to write it elsewhere.
std::string reasonOf(const Message& message, const std::string& writeFailure) {
  const bool isOfAnalysis = message.code == code::reportNotCreated || message.code == code::verdictNotCreated;
  if (!isOfAnalysis && message.code != code::resultNotWritten) {
    return "";
  }
  return (writeFailure.empty() ? "" : " in " + writeFailure) +
         (isOfAnalysis ? "; --folder DIR writes report and verdict into another folder" : "");
}

/// Whether the file begins as the text of a page does: with characters, and with a word of such a text.
bool isPageText(const std::string& file) {
  constexpr std::size_t looked = 512;
  std::ifstream open(file, std::ios::binary);
  std::string begin(looked, '\0');
  open.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  begin.resize(static_cast<std::size_t>(open.gcount()));
  if (begin.empty() || std::any_of(begin.begin(), begin.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
      })) {
    return false;
  }
  if (begin.starts_with("* items: ") || begin.starts_with("words ") || begin.starts_with("bytes ")) {
    return true;
  }
  const std::size_t at = begin.find(" at ");  // "staff 1 at 0 ..."
  const std::size_t number = at + std::string_view(" at ").size();
  const auto isDigit = [&](std::size_t i) { return i < begin.size() && begin[i] >= '0' && begin[i] <= '9'; };
  return at != std::string::npos && at > 0 && isDigit(at - 1) && (isDigit(number) || begin[number] == '-');
}

/// Whether the message is about a file that is the text of a page.
bool isMistakenText(const Message& message, const std::string& file) {
  return message.code == code::structureError && !file.empty() && file != "-" && isPageText(file);
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
  if (isMistakenText(message, file)) {
    const std::size_t dot = file.rfind('.');
    const bool hasSuffix = dot != std::string::npos && file.find_first_of("/\\", dot) == std::string::npos;
    return "kivsys build " + word + " " + shellWord(file.substr(0, hasSuffix ? dot : file.size()) + ".MUS");
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

std::string consoleLines(const Message& message, const FileNamer& nameOf, const FileNamer& pathOf,
                         const std::string& writeFailure) {
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
  const bool isText = isMistakenText(message, file);
  line += location.item == 0 || isText ? "" : "item " + std::to_string(location.item) + ": ";
  line += isNote(message) ? "note: " : "";
  const FileNamer printableName = [&](const std::string& name) { return printable(nameOf(name)); };
  const std::string sentence =
      isText ? "this is the text of a page, not a page" : consoleSentence(message, printableName);
  return line + printable(sentence + reasonOf(message, writeFailure)) + "\n" + nextLine(message, file);
}

}  // namespace kiv
