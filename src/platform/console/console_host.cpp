#include "platform/console/console_host.h"

#include <algorithm>
#include <iostream>
#include <optional>

namespace kiv {
namespace {

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

/// The lines of a message below each other, those after the first one indented.
std::string asLines(std::string_view text) {
  std::string lines;
  for (const char c : text) {
    if (c == '\r') {
      continue;
    }
    lines += c;
    if (c == '\n') {
      lines += "  ";
    }
  }
  return lines;
}

/// The answer that somebody has typed; nullopt when it is none. An empty line stands for No.
std::optional<Answer> answerIn(std::string line) {
  std::erase_if(line, [](char c) { return c == ' ' || c == '\t' || c == '\r'; });
  std::transform(line.begin(), line.end(), line.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (line == "y" || line == "yes") {
    return Answer::yes;
  }
  return line.empty() || line == "n" || line == "no" ? std::optional(Answer::no) : std::nullopt;
}

}  // namespace

Answer ConsoleHost::message(Icon icon, std::string_view text, Buttons buttons) {
  clearProgress();
  writeError(std::string(severityOf(icon)) + asLines(text) + "\n");
  const Answer answer = buttons == Buttons::yesNo ? ask() : Answer::ok;
  messages_.push_back({icon, std::string(text), answer});
  return answer;
}

Answer ConsoleHost::ask() const {
  if (!terminal_ || !inputIsTerminal()) {
    return Answer::no;
  }
  std::string line;
  while (true) {
    writeError("  [y/N] ");
    if (!std::getline(std::cin, line)) {
      return Answer::no;
    }
    if (const auto answer = answerIn(line)) {
      return *answer;
    }
  }
}

bool ConsoleHost::showText(const std::string& name) {
  if (terminal_) {
    clearProgress();
    writeError(readWhole(*this, name).value_or(""));
  }
  return true;
}

void ConsoleHost::showProgress(int done, int all, std::string_view plural) {
  if (!terminal_) {
    return;
  }
  clearProgress();
  if (done < all) {
    writeError(std::to_string(done) + " of " + std::to_string(all) + " " + std::string(plural));
    progressShown_ = true;
  }
}

std::optional<std::string> ConsoleHost::replaceFile(const std::string& name, std::string_view bytes) {
  auto failure = NativeSystem::replaceFile(name, bytes);
  if (!failure) {
    replacedFiles_.push_back(name);
  }
  return failure;
}

void ConsoleHost::clearProgress() {
  if (progressShown_) {
    writeError("\r\x1B[K");
    progressShown_ = false;
  }
}

}  // namespace kiv
