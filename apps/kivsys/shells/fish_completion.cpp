#include <algorithm>

#include "apps/kivsys/shells/completions.h"

namespace kiv {
namespace {

std::string quoted(const std::string& text) {
  return "'" + escaped(text, "\\'", "\\?") + "'";
}

/// What is offered for a value; without it fish offers all files.
std::string offered(ValueKind kind) {
  switch (kind) {
    case ValueKind::page:
      return " -f -a '(__kivsys_pages)'";
    case ValueKind::file:
      return " -F";
    case ValueKind::folder:
      return " -f -a '(__fish_complete_directories (commandline -ct))'";
    case ValueKind::shell:
      return " -f -a " + quoted(joined(shells(), " "));
    case ValueKind::command:
      return " -f -a '(__kivsys_commands)'";
    default:
      return " -f";
  }
}

std::string optionLine(const std::string& condition, const OptionRow& option) {
  std::string text = "complete -c kivsys -n " + quoted(condition);
  for (const std::string& name : option.names) {
    text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return text + (option.kind == ValueKind::none ? "" : " -r" + offered(option.kind)) + " -d " + quoted(option.help) +
         "\n";
}

std::string commandLines(const CommandRow& command) {
  const std::string condition = "__kivsys_runs " + command.name;
  std::string text;
  for (const OptionRow& option : command.options) {
    text += optionLine(condition, option);
  }
  if (command.operands.empty()) {
    return text;
  }
  // Fish does not count operands; where they differ, any file may be meant.
  const ValueKind first = command.operands.front().kind;
  const bool alike = std::all_of(command.operands.begin(), command.operands.end(),
                                 [&](const OperandRow& operand) { return operand.kind == first; });
  return text + "complete -c kivsys -n " + quoted(condition) + offered(alike ? first : ValueKind::file) + "\n";
}

constexpr const char* functions = R"(# Completes command lines of kivsys in fish; printed by: kivsys completions fish

function __kivsys_runs
    set -l words (commandline -opc)
    test "$words[2]" = "$argv[1]"
end

function __kivsys_pages
    __fish_complete_path (commandline -ct) | string match -r -i '^.*(?:/|\.mus)(?:\t.*)?$'
end

)";

/// The function that lists the commands, which those above do not know.
std::string commandsFunction(const CommandTable& table) {
  return "function __kivsys_commands\n    string split ' ' " + quoted(joined(commandNames(table), " ")) +
         "\nend\n\ncomplete -c kivsys -f\n";
}

}  // namespace

std::string fishCompletion(const CommandTable& table) {
  std::string text = functions + commandsFunction(table);
  for (const OptionRow& option : table.program.options) {
    text += optionLine("__kivsys_runs ''", option);
  }
  for (const CommandRow& command : table.commands) {
    text += "complete -c kivsys -n " + quoted("__kivsys_runs ''") + " -a " + command.name + " -d " +
            quoted(command.help) + "\n";
  }
  for (const CommandRow& command : table.commands) {
    text += commandLines(command);
  }
  return text;
}

}  // namespace kiv
