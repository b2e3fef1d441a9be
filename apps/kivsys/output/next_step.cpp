#include "apps/kivsys/output/next_step.h"

#include <algorithm>
#include <string_view>

#include "messages/codes.h"
#include "platform/console/message_words.h"

namespace kiv {
namespace {

/// The argument as a shell passes it on unchanged.
std::string quoted(const std::string& argument) {
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_./:=,+-"
#ifdef _WIN32
      "\\";
  const std::string quote = "\"";
  const std::string inside = "\"\"";
#else
      ;
  const std::string quote = "'";
  const std::string inside = "'\\''";
#endif
  if (!argument.empty() && argument.front() != '-' && argument.find_first_not_of(plain) == std::string::npos) {
    return argument;
  }
  std::string text = quote;
  for (const char c : argument) {
    text += std::string(1, c) == quote ? inside : std::string(1, c);
  }
  return text + quote;
}

/// False only when the instrument is known to have a staff in that system.
bool isUndefined(const Location& cue, const Layouts& layouts) {
  if (!cue.system || !cue.instrument) {
    return true;
  }
  return std::none_of(layouts.classes.begin(), layouts.classes.end(), [&](const LayoutClass& layout) {
    const auto isItsSystem = [&](std::size_t s) { return layouts.systems[s].number == *cue.system; };
    return std::any_of(layout.systems.begin(), layout.systems.end(), isItsSystem) &&
           std::count(layout.instruments.begin(), layout.instruments.end(), *cue.instrument) > 0;
  });
}

bool concernsIds(const Message& message, const std::optional<Layouts>& layouts) {
  if (message.code == code::undefinedCue) {
    return !layouts || message.places.empty() ||
           std::any_of(message.places.begin(), message.places.end(),
                       [&](const Location& cue) { return isUndefined(cue, *layouts); });
  }
  return message.code == code::zeroInstrumentId || message.code == code::duplicateInstrumentId;
}

}  // namespace

std::string asArgument(const std::string& name) {
  return quoted(name.starts_with('-') ? "./" + name : name);
}

std::string selectedArguments(const Selection& selection) {
  std::string arguments;
  if (!selection.names.empty()) {
    return (selection.folder.empty() ? "" : " --folder " + asArgument(selection.folder)) + " --names " +
           asArgument(selection.names);
  }
  for (const std::string& page : selection.pages) {
    arguments += " " + asArgument(page);
  }
  return arguments;
}

std::optional<std::string> stepForPage(const RunOutcome& outcome, const FileNamer& nameOf) {
  for (const ShownMessage& shown : outcome.messages) {
    const std::string& file = shown.message.location.file;
    const std::string command = file.empty() ? "" : nextCommand(shown.message, nameOf(file));
    if (!command.empty()) {
      return command;
    }
  }
  return std::nullopt;
}

std::optional<std::string> stepForGroup(const RunOutcome& outcome, const std::optional<Layouts>& layouts,
                                        const Selection& selection) {
  const bool canRepeat = outcome.normalEnd && selection.names != "-";  // standard input cannot be read twice
  if (canRepeat && std::any_of(outcome.messages.begin(), outcome.messages.end(),
                               [&](const ShownMessage& shown) { return concernsIds(shown.message, layouts); })) {
    return "kivsys suggest" + selectedArguments(selection);
  }
  return std::nullopt;
}

}  // namespace kiv
