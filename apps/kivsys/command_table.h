#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace kiv {

/// What a shell can suggest for a value.
enum class ValueKind {
  none,  ///< there is no value
  word,  ///< free text, for which there are no suggestions
  page,
  file,
  folder,
  shell,
  command,
};

/// An option of a command.
struct OptionRow {
  std::vector<std::string> names;  ///< with their dashes, the short ones first
  std::string value;               ///< what the help calls its value, such as "DIR"; "" for a flag
  ValueKind kind = ValueKind::none;
  std::string help;
  bool required = false;
};

/// A positional argument of a command.
struct OperandRow {
  std::string value;
  ValueKind kind = ValueKind::word;
  std::string help;
  bool required = false;
  bool many = false;  ///< stands for all remaining words
};

struct CommandRow {
  std::string name;
  std::string help;
  std::string footer;  ///< paragraphs; a line that begins with two blanks is preformatted
  std::vector<OptionRow> options;
  std::vector<OperandRow> operands;
};

/// All commands and options, in the order of the help.
struct CommandTable {
  CommandRow program;
  std::vector<CommandRow> commands;
};

CommandTable tableOf(const CLI::App& app);

/// What a shell can suggest for the value of an option or operand.
ValueKind valueKindOf(const CLI::Option& option);

/// The names of all commands.
std::vector<std::string> commandNames(const CommandTable& table);

}  // namespace kiv
