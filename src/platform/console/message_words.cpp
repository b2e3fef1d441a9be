#include "platform/console/message_words.h"

#include "messages/page_messages.h"
#include "platform/console/page_text_file.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

std::string nextLine(const Message& message, const MessageFile& file) {
  const std::string command = commandAfter(message, file);
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

/// What the file of the message is, if it never was a page.
NoPage noPageOf(const Message& message, const MessageFile& file) {
  const bool isDamaged = message.code == code::structureError;
  const bool isMisnamed = message.code == code::naming || message.code == code::namingNoNumber;
  if (file.name.empty() || file.name == "-" || !(isDamaged || isMisnamed)) {
    return NoPage::none;
  }
  const NoPage kind = noPageAt(file.path);
  return isDamaged || kind == NoPage::listOfPages ? kind : NoPage::none;
}

/// Messages of which the console prints the facts elsewhere.
bool isSilent(const Message& message) {
  return message.code == code::sortFinished;
}

}  // namespace

std::string commandAfter(const Message& message, const MessageFile& file) {
  const std::string& name = file.name;
  const bool isOneLine = printable(name) == name;
  if (name.empty() || name == "-" || !isOneLine) {
    return "";
  }
  switch (noPageOf(message, file)) {
    case NoPage::listOfPages:
      return "kivsys analyze --names " + fileWord(name);
    case NoPage::pageText:
      return buildCommand(name);
    case NoPage::empty:
    case NoPage::otherText:
      return "";
    case NoPage::none:
      break;
  }
  if (messages::isDamage(message)) {
    return "kivsys recover " + fileWord(name);
  }
  if (message.code == code::tooManyItems) {
    return "kivsys dump " + fileWord(name);
  }
  if (message.code == code::systemBarline) {
    return "kivsys draw " + fileWord(name) + " --out " + fileWord(name.substr(0, name.rfind('.')) + ".svg");
  }
  return "";
}

std::string mistakenWords(const Message& message, const MessageFile& file) {
  return wordsOf(noPageOf(message, file));
}

std::string consoleLines(const Message& message, const FileNamer& nameOf, const FileNamer& pathOf,
                         const std::string& writeFailure, NextLine next) {
  if (isSilent(message)) {
    return "";
  }
  const Location& location = message.location;
  const bool isAboutFile = !location.file.empty();
  const MessageFile file{isAboutFile ? nameOf(location.file) : "", isAboutFile ? pathOf(location.file) : ""};
  if (message.code == code::namesFileMissing && isAboutFile) {
    const auto failure = readFailure(file.path);
    const auto reason = failure ? failure : readFailure(file.name);  // it may be refused for its name alone
    return "kivsys: cannot read " + printable(file.name) + (reason ? ": " + *reason : "") + "\n";
  }
  std::string line = "kivsys: ";
  line += file.name.empty() ? "" : printable(file.name) + ": ";
  const std::string mistaken = mistakenWords(message, file);
  line += location.item == 0 || !mistaken.empty() ? "" : "item " + std::to_string(location.item) + ": ";
  line += isNote(message) ? "note: " : "";
  const FileNamer printableName = [&](const std::string& name) { return printable(nameOf(name)); };
  const std::string sentence = mistaken.empty() ? consoleSentence(message, printableName) : mistaken;
  return line + printable(sentence + reasonOf(message, writeFailure)) + "\n" +
         (next == NextLine::shown ? nextLine(message, file) : "");
}

}  // namespace kiv
