#include "platform/console/console_user.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <optional>

#include "platform/console/printable.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

constexpr std::size_t longestShown = std::size_t{64} * 1024;  // bytes of a text: more than a user reads

std::string_view severityOf(Icon icon) {
  switch (icon) {
    case Icon::critical:
      return "critical: ";
    case Icon::exclamation:
      return "exclamation: ";
    case Icon::information:
      return "information: ";
    case Icon::none:
      break;
  }
  return "note: ";
}

/// Escapes the line ends and other control characters of a name wherever the text holds it.
void escapeName(const std::string& name, std::string& text) {
  const std::string shown = printable(name);
  if (name.empty() || shown == name) {
    return;
  }
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + shown.size())) {
    text.replace(at, name.size(), shown);
  }
}

/// The text of a message, its own line ends in it and those of inserted names escaped.
std::string withNamesEscaped(const Message& message) {
  std::string text = message.text;
  escapeName(message.location.file, text);
  for (const Location& place : message.places) {
    escapeName(place.file, text);
  }
  for (const std::string& name : message.names) {
    escapeName(name, text);
  }
  return text;
}

/// The lines of a message below each other, those after the first one indented.
std::string asLines(std::string_view text) {
  constexpr std::string_view lineEnd = "\r\n";
  std::string lines;
  for (std::size_t end = text.find(lineEnd); end != std::string_view::npos; end = text.find(lineEnd)) {
    lines += printable(text.substr(0, end)) + "\n  ";
    text.remove_prefix(end + lineEnd.size());
  }
  return lines + printable(text);
}

/// What the user has typed as an answer.
struct TypedAnswer {
  Answer answer = Answer::no;
  bool isForAll = false;  ///< also to all further questions
};

/// The answer that the user has typed; nullopt when it is none. An empty line stands for No.
std::optional<TypedAnswer> answerIn(std::string line) {
  std::erase_if(line, [](char c) { return c == ' ' || c == '\t' || c == '\r'; });
  std::transform(line.begin(), line.end(), line.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  const bool isAll = line == "a" || line == "all";
  const bool isQuit = line == "q" || line == "quit";
  if (isAll || line == "y" || line == "yes") {
    return TypedAnswer{Answer::yes, isAll};
  }
  if (isQuit || line.empty() || line == "n" || line == "no") {
    return TypedAnswer{Answer::no, isQuit};
  }
  return std::nullopt;
}

}  // namespace

bool ConsoleUser::isPrinted(const Message& message) const {
  return !quiet_ || message.icon == Icon::critical || message.buttons == Buttons::yesNo;
}

Answer ConsoleUser::show(const Message& message) {
  clearProgress();
  if (isPrinted(message)) {
    const NextLine next = quiet_ ? NextLine::hidden : NextLine::shown;
    NativeSystem::writeError(nameOf_
                                 ? consoleLines(message, nameOf_, pathOf_, writeFailure_ ? writeFailure_() : "", next)
                                 : std::string(severityOf(message.icon)) + asLines(withNamesEscaped(message)) + "\n");
  }
  const Answer answer = message.buttons == Buttons::yesNo ? ask() : Answer::ok;
  messages_.push_back({message, answer});
  return answer;
}

Answer ConsoleUser::ask() {
  if (standingAnswer_) {
    return *standingAnswer_;
  }
  if (!terminal_ || !NativeSystem::inputIsTerminal()) {
    return Answer::no;
  }
  std::string line;
  while (true) {
    const bool explains = nameOf_ && !answersExplained_;
    NativeSystem::writeError(explains ? "  [y/N/a/q] (y: yes, n: no, a: yes to all, q: no to all) " : "  [y/N/a/q] ");
    answersExplained_ = true;
    letSignalsEndReading(true);
    const bool isRead = static_cast<bool>(std::getline(std::cin, line));
    letSignalsEndReading(false);
    endIfStopped();
    if (!isRead) {
      return Answer::no;
    }
    if (const auto typed = answerIn(line)) {
      standingAnswer_ = typed->isForAll ? std::optional(typed->answer) : std::nullopt;
      return typed->answer;
    }
  }
}

void ConsoleUser::printNotes(std::string_view lines) {
  if (!quiet_ && !lines.empty()) {
    clearProgress();
    NativeSystem::writeError(std::string(lines));
  }
}

bool ConsoleUser::showText(const std::string& name) {
  if (terminal_ && !quiet_) {
    clearProgress();
    NativeSystem::writeError(printableLines(readWhole(files_, name, longestShown).value_or("")));
  }
  return true;
}

void ConsoleUser::showProgress(int done, int all, std::string_view plural) {
  progress_.note(done, all, plural);
  if (!terminal_ || quiet_ || !showsProgress_) {
    return;
  }
  if (const auto line = progress_.lineAt(std::chrono::steady_clock::now(), NativeSystem::outputColumns())) {
    clearProgress();
    NativeSystem::writeError(*line);
    progressShown_ = !line->empty();
  }
}

void ConsoleUser::clearProgress() {
  if (progressShown_) {
    NativeSystem::writeError("\r\x1B[K");
    progressShown_ = false;
  }
}

}  // namespace kiv
