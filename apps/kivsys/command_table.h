#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kiv {

/// What a shell can offer in the place of a value.
enum class ValueKind {
  none,  ///< there is no value
  word,  ///< something that nobody can guess
  page,
  file,
  folder,
  shell,
};

/// An option of a command.
struct OptionRow {
  std::vector<std::string> names;  ///< with their dashes, the short ones first
  std::string value;               ///< what the help calls its value, such as "DIR"; "" for a flag
  ValueKind kind = ValueKind::none;
  std::string help;
  bool required = false;
};

/// What a command takes without an option's name.
struct OperandRow {
  std::string value;
  ValueKind kind = ValueKind::word;
  std::string help;
  bool required = false;
  bool many = false;  ///< takes all words that are left
};

struct CommandRow {
  std::string name;
  std::string help;
  std::string footer;  ///< paragraphs; a line that begins with two blanks stands as it is
  std::vector<OptionRow> options;
  std::vector<OperandRow> operands;
};

/// All that the program understands, in the order of its help.
struct CommandTable {
  CommandRow program;
  std::vector<CommandRow> commands;
};

CommandTable tableOf(const CLI::App& app);

}  // namespace kiv
