#include "apps/kivsys/shells/completions.h"

namespace kiv {
namespace {

/// What the script's `_kivsys_offer` is called with.
std::string bashKind(ValueKind kind) {
  switch (kind) {
    case ValueKind::page:
      return "page";
    case ValueKind::file:
      return "file";
    case ValueKind::folder:
      return "folder";
    case ValueKind::shell:
      return "shell";
    case ValueKind::command:
      return "command";
    default:
      return "word";
  }
}

std::string caseLine(const std::string& pattern, const std::string& assignment) {
  return "    " + pattern + ") " + assignment + " ;;\n";
}

std::string optionNames(const CommandRow& command) {
  std::vector<std::string> names;
  for (const OptionRow& option : command.options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return joined(names, " ");
}

std::string optionCases(const CommandTable& table) {
  std::string text = caseLine("''", "options='" + optionNames(table.program) + "'");
  for (const CommandRow& command : table.commands) {
    text += caseLine(command.name, "options='" + optionNames(command) + "'");
  }
  return text;
}

std::string valueCases(const CommandTable& table) {
  std::string text;
  for (const CommandRow& command : table.commands) {
    for (const OptionRow& option : command.options) {
      for (const std::string& name : option.names) {
        text += option.kind == ValueKind::none
                    ? ""
                    : caseLine("'" + command.name + " " + name + "'", "kind=" + bashKind(option.kind));
      }
    }
  }
  return text;
}

std::string operandCases(const CommandTable& table) {
  std::string text;
  for (const CommandRow& command : table.commands) {
    for (std::size_t i = 0; i < command.operands.size(); ++i) {
      const OperandRow& operand = command.operands[i];
      const std::string number = operand.many ? "*" : std::to_string(i + 1);
      text += caseLine("'" + command.name + " '" + number, "kind=" + bashKind(operand.kind));
    }
  }
  return text;
}

constexpr const char* offer = R"(
_kivsys_offer() {
  local word=$2
  case $1 in
    page)
      mapfile -t COMPREPLY < <(compgen -f -X '!*.[Mm][Uu][Ss]' -- "$word"; compgen -d -- "$word")
      compopt -o filenames 2>/dev/null ;;
    file)
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      compopt -o filenames 2>/dev/null ;;
    folder)
      mapfile -t COMPREPLY < <(compgen -d -- "$word")
      compopt -o filenames 2>/dev/null ;;
    shell) mapfile -t COMPREPLY < <(compgen -W ')";

constexpr const char* offerCommands = R"(' -- "$word") ;;
    command) mapfile -t COMPREPLY < <(compgen -W ')";

constexpr const char* complete = R"(' -- "$word") ;;
  esac
}

_kivsys() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local command='' options kind number=1 i
  COMPREPLY=()
  # Bash splits --option=value into three words.
  if [[ $word == '=' ]]; then
    word=''
  elif [[ $before == '=' ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  for ((i = 1; i < COMP_CWORD; ++i)); do
    if [[ ${COMP_WORDS[i]} == '=' ]]; then
      continue
    elif [[ -z $command ]]; then
      [[ ${COMP_WORDS[i]} == -* ]] || command=${COMP_WORDS[i]}
    elif [[ ${COMP_WORDS[i]} == -?* ]]; then
      _kivsys_value "$command" "${COMP_WORDS[i]}"
      if [[ -n $kind ]]; then
        [[ ${COMP_WORDS[i + 1]} == '=' ]] && ((++i))
        ((++i))
      fi
    else
      ((++number))
    fi
  done
  _kivsys_value "$command" "$before"
  if [[ -n $kind ]]; then
    _kivsys_offer "$kind" "$word"
  elif [[ $word == -* ]]; then
    _kivsys_options "$command"
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  elif [[ -z $command ]]; then
    mapfile -t COMPREPLY < <(compgen -W ')";

}  // namespace

std::string bashCompletion(const CommandTable& table) {
  const std::string names = joined(commandNames(table), " ");
  return "# Completes command lines of kivsys in bash; printed by: kivsys completions bash\n\n"
         "# Set the caller's variables: the options of a command, and the kind of a value or operand.\n"
         "_kivsys_options() {\n  case $1 in\n" +
         optionCases(table) + "    *) options='' ;;\n  esac\n}\n\n_kivsys_value() {\n  case \"$1 $2\" in\n" +
         valueCases(table) + "    *) kind='' ;;\n  esac\n}\n\n_kivsys_operand() {\n  case \"$1 $2\" in\n" +
         operandCases(table) + "    *) kind='' ;;\n  esac\n}\n" + offer + joined(shells(), " ") + offerCommands +
         names + complete + names +
         "' -- \"$word\")\n  else\n    _kivsys_operand \"$command\" \"$number\"\n"
         "    _kivsys_offer \"$kind\" \"$word\"\n  fi\n}\n\ncomplete -F _kivsys kivsys\n";
}

}  // namespace kiv
