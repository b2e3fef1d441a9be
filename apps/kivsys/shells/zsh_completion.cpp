#include "apps/kivsys/shells/completions.h"

namespace kiv {
namespace {

std::string quoted(const std::string& text) {
  std::string result;
  for (const char c : text) {
    result += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return "'" + result + "'";
}

/// Text in a specification, whose parts end with colons and brackets.
std::string plain(const std::string& text) {
  return escaped(text, "\\:[]", "\\?");
}

/// The commands are those of the script's own list.
std::string action(ValueKind kind) {
  switch (kind) {
    case ValueKind::page:
      return "_files -g \"*.[Mm][Uu][Ss]\"";
    case ValueKind::file:
      return "_files";
    case ValueKind::folder:
      return "_files -/";
    case ValueKind::shell:
      return "(" + joined(shells(), " ") + ")";
    case ValueKind::command:
      return "(${commands%%:*})";
    default:
      return " ";
  }
}

std::string optionLines(const CommandRow& command, const std::string& indent) {
  std::string text;
  for (const OptionRow& option : command.options) {
    for (const std::string& name : option.names) {
      const bool valued = option.kind != ValueKind::none;
      std::string line = name == "--help" || name == "-h" ? "(- *)" : "";
      line += name;
      line += !valued ? "" : name.starts_with("--") ? "=" : "+";
      line += "[" + plain(option.help) + "]";
      line += valued ? ":" + plain(option.value) + ":" + action(option.kind) : "";
      text += " \\\n" + indent + quoted(line);
    }
  }
  return text;
}

std::string operandLines(const CommandRow& command, const std::string& indent) {
  std::string text;
  for (std::size_t i = 0; i < command.operands.size(); ++i) {
    const OperandRow& operand = command.operands[i];
    text +=
        " \\\n" + indent +
        quoted((operand.many ? "*" : std::to_string(i + 1)) + ":" + plain(operand.value) + ":" + action(operand.kind));
  }
  return text;
}

}  // namespace

std::string zshCompletion(const CommandTable& table) {
  std::string text =
      "#compdef kivsys\n# Completes command lines of kivsys in zsh; printed by: kivsys completions zsh\n\n_kivsys() {\n"
      "  local curcontext=\"$curcontext\" state state_descr line\n  typeset -A opt_args\n  local -a commands\n"
      "  commands=(\n";
  for (const CommandRow& command : table.commands) {
    text += "    " + quoted(plain(command.name) + ":" + command.help) + "\n";
  }
  text += "  )\n  _arguments -C" + optionLines(table.program, "    ") +
          " \\\n    '1:command:->command' \\\n    '*::argument:->argument'\n"
          "  case $state in\n    command) _describe command commands ;;\n    argument)\n      case $words[1] in\n";
  for (const CommandRow& command : table.commands) {
    text += "        " + command.name + ")\n          _arguments" + optionLines(command, "            ") +
            operandLines(command, "            ") + " ;;\n";
  }
  return text +
         "      esac ;;\n  esac\n}\n\n"
         "if [[ $funcstack[1] == _kivsys ]]; then\n  _kivsys \"$@\"\nelse\n  compdef _kivsys kivsys\nfi\n";
}

}  // namespace kiv
