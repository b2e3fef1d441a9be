#include "apps/kivsys/output/next_step.h"

#include <algorithm>
#include <string_view>

#include "messages/codes.h"

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

/// A name that begins with a hyphen would be an option.
std::string asArgument(const std::string& name) {
  return quoted(name.starts_with('-') ? "./" + name : name);
}

bool concernsIds(const Message& message) {
  return message.code == code::zeroInstrumentId || message.code == code::duplicateInstrumentId ||
         message.code == code::undefinedCue;
}

std::string selected(const Selection& selection) {
  std::string arguments;
  if (!selection.names.empty()) {
    arguments = (selection.folder.empty() ? "" : " --folder " + asArgument(selection.folder)) + " --names " +
                asArgument(selection.names);
  }
  for (const std::string& page : selection.pages) {
    arguments += " " + asArgument(page);
  }
  for (const std::string& table : selection.corrections.files) {
    arguments += " --corrections " + asArgument(table);
  }
  return arguments + (selection.corrections.only.empty() ? "" : " --only " + selection.corrections.only);
}

/// Standard input cannot be read twice.
bool canRepeat(const Selection& selection) {
  const auto& tables = selection.corrections.files;
  return selection.names != "-" && std::find(tables.begin(), tables.end(), "-") == tables.end();
}

}  // namespace

std::optional<std::string> nextStep(const RunOutcome& outcome, const Selection& selection) {
  if (outcome.normalEnd && canRepeat(selection) &&
      std::any_of(outcome.messages.begin(), outcome.messages.end(),
                  [](const ShownMessage& shown) { return concernsIds(shown.message); })) {
    return "kivsys suggest" + selected(selection);
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
  return "kivsys " + command + selected(corrected);
}

}  // namespace kiv
