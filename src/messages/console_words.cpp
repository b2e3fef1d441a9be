#include "messages/console_words.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace kiv {
namespace {

/// Words that make sense in a box of the panel only.
constexpr std::array<std::string_view, 10> wordsOfBoxes = {
    "Hit OK to terminate.",
    "Hit OK to abort",
    "Hit enter to continue.",
    "Try to recover with KivValid/KivRecover.",
    "Contact development.",
    "This is a warning only. The program will proceed.",
    "Names file will be deleted after view.",
    "Define a new names file by music file selection.",
    " (using KivRenam > File)",
    "Rename your input.",
};

/// Lines whose facts are at the start of the console's line, or that are none there.
constexpr std::array<std::string_view, 2> knownLines = {"Current folder = ", "Item number = "};

constexpr std::string_view formatFollows = "Filenames required for this program must have this format:\r\n\r\n    ";

void replaceAll(std::string_view what, const std::string& by, std::string& text) {
  for (std::size_t at = what.empty() ? std::string::npos : text.find(what); at != std::string::npos;
       at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

/// The file in the text, which the line begins with already.
void removeFile(const std::string& file, std::string& text) {
  for (const std::string& mention : {" in file: " + file, " Top file is: " + file, ": " + file, " [" + file + "]"}) {
    replaceAll(mention, "", text);
  }
}

std::vector<std::string> linesOf(std::string_view text) {
  constexpr std::string_view lineEnd = "\r\n";
  std::vector<std::string> lines;
  for (std::size_t end = text.find(lineEnd); end != std::string_view::npos; end = text.find(lineEnd)) {
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end + lineEnd.size());
  }
  lines.emplace_back(text);
  return lines;
}

/// Without blanks at both ends, and without the stop of a sentence.
std::string trimmed(std::string line) {
  line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
  line.erase(line.find_last_not_of(" .") + 1);
  return line;
}

bool isFullName(const std::string& name) {
  return name.starts_with('\\') || name.find(":\\") == 1;
}

bool isKnown(const Message& message, const std::string& line) {
  const Location& location = message.location;
  const std::string place = location.file + ", item " + std::to_string(location.item);
  const bool isPlace = !location.file.empty() && (line == place || line == "It comes from " + place ||
                                                  line == "Input file cannot be " + location.file);
  return isPlace || (!location.file.empty() && line == location.file) ||
         std::any_of(knownLines.begin(), knownLines.end(),
                     [&](std::string_view known) { return line.starts_with(known); });
}

/// The verdict, which is why pages are converted.
std::string analysisResult(const std::string& text) {
  std::string verdict;
  for (const std::string& line : linesOf(text)) {
    if (line.starts_with("CONSISTENCY=") || line.starts_with("MULTIFILE=")) {
      verdict += (verdict.empty() ? "" : ", ") + line;
    }
  }
  return "the pages need a conversion: " + verdict;
}

/// What comes after the text of some messages.
std::string addition(const Message& message) {
  if (message.code == code::systemBarline && !message.location.file.empty()) {
    return "; only a page of one system can be sorted";
  }
  return "";
}

}  // namespace

bool isNote(const Message& message) {
  return message.icon != Icon::critical && message.buttons != Buttons::yesNo;
}

std::string consoleSentence(const Message& message, const FileNamer& nameOf) {
  if (message.code == code::analysisResult) {
    return analysisResult(message.text);
  }
  std::string text = message.text;
  if (message.code == code::resultUnreadable) {
    replaceAll("\r\nItem number = ", ", item ", text);
  }
  if (!message.location.file.empty()) {
    removeFile(message.location.file, text);
  }
  std::vector<std::string> names = message.names;
  for (const Location& place : message.places) {
    names.push_back(place.file);
  }
  for (const std::string& name : names) {
    const bool isElsewhere = !message.location.file.empty() && name.starts_with(message.location.file);
    if (isFullName(name) && !isElsewhere) {
      replaceAll(name, nameOf(name), text);
    }
  }
  replaceAll(formatFollows, "the form is ", text);
  for (const std::string_view words : wordsOfBoxes) {
    replaceAll(words, "", text);
  }
  std::string joined;
  for (const std::string& line : linesOf(text)) {
    const std::string words = isKnown(message, line) ? "" : trimmed(line);
    const std::string separator = joined.empty() ? "" : joined.ends_with(':') ? " " : "; ";
    joined += words.empty() ? "" : separator + words;
  }
  return joined + addition(message);
}

}  // namespace kiv
