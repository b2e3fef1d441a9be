#include "apps/kivsys/output/next_step.h"

#include <algorithm>
#include <string_view>

#include "messages/codes.h"

namespace kiv {
namespace {

bool concernsIds(const Message& message) {
  return message.code == code::zeroInstrumentId || message.code == code::duplicateInstrumentId ||
         message.code == code::undefinedCue;
}

}  // namespace

std::string quotedForShell(const std::string& argument) {
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

std::string asArgument(const std::string& name) {
  return quotedForShell(name.starts_with('-') ? "./" + name : name);
}

std::string selectionArguments(const Selection& selection) {
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

std::optional<std::string> nextStep(const RunOutcome& outcome, const Selection& selection) {
  const bool canRepeat = outcome.normalEnd && selection.names != "-";  // standard input cannot be read twice
  if (canRepeat && std::any_of(outcome.messages.begin(), outcome.messages.end(),
                               [](const ShownMessage& shown) { return concernsIds(shown.message); })) {
    return "kivsys suggest" + selectionArguments(selection);
  }
  return std::nullopt;
}

}  // namespace kiv
