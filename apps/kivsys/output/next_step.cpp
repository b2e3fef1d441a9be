#include "apps/kivsys/output/next_step.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "messages/codes.h"
#include "platform/console/message_words.h"
#include "platform/console/shell_words.h"

namespace kiv {
namespace {

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

bool canRepeat(const Selection& selection) {
  const auto& tables = selection.corrections.files;
  return selection.names != "-" && std::find(tables.begin(), tables.end(), "-") == tables.end();
}

std::string selectionArguments(const Selection& selection) {
  std::string arguments;
  if (!selection.names.empty()) {
    arguments = (selection.folder.empty() ? "" : " --folder " + fileWord(selection.folder)) + " --names " +
                fileWord(selection.names);
  }
  arguments += selection.keepOrder ? " --keep-order" : "";
  for (const std::string& page : selection.pages) {
    arguments += " " + fileWord(page);
  }
  for (const std::string& table : selection.corrections.files) {
    arguments += " --corrections " + fileWord(table);
  }
  return arguments + (selection.corrections.only.empty() ? "" : " --only " + selection.corrections.only);
}

std::string newResultArgument(const ConsoleSystem& system) {
  return " --result " + fileWord(system.newName("converted") + "/WORK0001.MUS");
}

Json nextJson(const std::optional<std::string>& next) {
  return next ? Json(NativeSystem::toUtf8(*next)) : Json();
}

std::optional<std::string> stepForPage(const RunOutcome& outcome, ConsoleSystem& system) {
  return stepForPage(outcome.messages, system);
}

std::optional<std::string> stepForPage(const std::vector<ShownMessage>& messages, ConsoleSystem& system) {
  for (const ShownMessage& shown : messages) {
    const std::string& file = shown.message.location.file;
    const std::string command =
        file.empty() ? "" : commandAfter(shown.message, {system.shownName(file), system.diskName(file)});
    if (!command.empty()) {
      return command;
    }
  }
  return std::nullopt;
}

bool needsLayouts(const RunOutcome& outcome) {
  return std::any_of(outcome.messages.begin(), outcome.messages.end(),
                     [](const ShownMessage& shown) { return shown.message.code == code::undefinedCue; });
}

std::optional<std::string> stepForGroup(const RunOutcome& outcome, const std::optional<Layouts>& layouts,
                                        const Selection& selection) {
  if (outcome.normalEnd && canRepeat(selection) &&
      std::any_of(outcome.messages.begin(), outcome.messages.end(),
                  [&](const ShownMessage& shown) { return concernsIds(shown.message, layouts); })) {
    const std::string layout = selection.layout.empty() ? "" : " --layout " + fileWord(selection.layout);
    return "kivsys suggest" + selectionArguments(selection) + layout;
  }
  return std::nullopt;
}

std::optional<std::string> nextWithCorrections(const std::string& command, const Selection& selection,
                                               const std::string& table) {
  if (table.empty() || table == "-" || !canRepeat(selection)) {
    return std::nullopt;
  }
  Selection corrected = selection;
  corrected.corrections.files.push_back(table);
  return "kivsys " + command + selectionArguments(corrected);
}

}  // namespace kiv
