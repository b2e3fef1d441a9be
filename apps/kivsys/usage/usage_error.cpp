#include "apps/kivsys/usage/usage_error.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/usage/nearest_word.h"
#include "platform/console/error_line.h"
#include "platform/console/native_system.h"

namespace kiv {
namespace {

std::string helpOf(const CommandRow& command) {
  return "'kivsys " + (command.name == "kivsys" ? "" : command.name + " ") + "--help'";
}

std::string tryHelp(const CommandRow& command) {
  return "Try " + helpOf(command) + ".";
}

std::string didYouMean(const std::optional<std::string>& nearest) {
  return nearest ? "; did you mean '" + *nearest + "'?" : "";
}

/// The reason, after the command that it is about.
std::string inCommand(const CommandRow& command, const std::string& reason) {
  const std::string start = command.name + ": ";
  return command.name == "kivsys" || reason.starts_with(start) ? reason : start + reason;
}

const OptionRow* findOption(const CommandRow& command, const std::string& name) {
  const auto found = std::find_if(command.options.begin(), command.options.end(), [&](const OptionRow& option) {
    return std::find(option.names.begin(), option.names.end(), name) != option.names.end();
  });
  return found == command.options.end() ? nullptr : &*found;
}

UsageError unknownOption(const CommandRow& command, const std::string& typed) {
  std::vector<std::string> names;  // the long ones, without their dashes
  for (const OptionRow& option : command.options) {
    for (const std::string& name : option.names) {
      if (name.starts_with("--")) {
        names.push_back(name.substr(2));
      }
    }
  }
  const std::string letters = typed.substr(std::min(typed.find_first_not_of('-'), typed.size()));
  const auto nearest = letters.size() > 1 ? nearestWord(letters, names) : std::nullopt;
  const auto meant = nearest ? std::optional("--" + *nearest) : std::nullopt;
  return {inCommand(command, "unknown option: " + typed + didYouMean(meant)), helpOf(command) + " lists the options."};
}

/// Reads the words of one command, up to the first one that is wrong.
class CommandWords {
 public:
  CommandWords(const CommandRow& command, const std::vector<std::string>& words, std::size_t first)
      : command_(command), words_(words), next_(first) {}

  std::optional<UsageError> findError() {
    for (; next_ < words_.size() && !error_; ++next_) {
      const std::string& word = words_[next_];
      if (onlyOperands_ || !word.starts_with('-') || word == "-") {
        readOperand(word);
      } else if (word == "--") {
        onlyOperands_ = true;
      } else if (word.starts_with("--")) {
        readLong(word);
      } else {
        readShort(word);
      }
    }
    return error_ ? error_ : missing();
  }

 private:
  void readOperand(const std::string& word) {
    const bool isAny = std::any_of(command_.operands.begin(), command_.operands.end(),
                                   [](const OperandRow& operand) { return operand.many; });
    if (++operands_ > command_.operands.size() && !isAny) {
      error_ = {inCommand(command_, "unexpected argument: " + word), tryHelp(command_)};
    }
  }

  void readLong(const std::string& word) {
    const std::string name = word.substr(0, word.find('='));
    const OptionRow* option = findOption(command_, name);
    if (option == nullptr) {
      error_ = unknownOption(command_, name);
      return;
    }
    given_.push_back(option);
    if (!option->value.empty()) {
      readValue(name, *option, name.size() < word.size() ? Value::isInWord : Value::isNext, word.ends_with('='));
    }
  }

  enum class Value { isInWord, isNext };

  void readValue(const std::string& name, const OptionRow& option, Value place, bool isEmpty) {
    next_ += place == Value::isNext ? 1U : 0U;
    if (place == Value::isNext ? next_ >= words_.size() : isEmpty) {
      error_ = {inCommand(command_, name + " needs " + option.value), tryHelp(command_)};
    }
  }

  /// Several short options may be one word, the value of the last one too.
  void readShort(const std::string& word) {
    for (std::size_t at = 1; at < word.size(); ++at) {
      const OptionRow* option = findOption(command_, std::string("-") + word[at]);
      if (option == nullptr) {
        error_ = unknownOption(command_, word);
        return;
      }
      given_.push_back(option);
      if (!option->value.empty()) {
        readValue(option->names.front(), *option, at + 1 < word.size() ? Value::isInWord : Value::isNext, false);
        return;
      }
    }
  }

  std::optional<UsageError> missing() const {
    for (const OptionRow& option : command_.options) {
      if (option.required && std::find(given_.begin(), given_.end(), &option) == given_.end()) {
        return UsageError{inCommand(command_, option.names.back() + " " + option.value + " is missing"),
                          tryHelp(command_)};
      }
    }
    for (std::size_t i = operands_; i < command_.operands.size(); ++i) {
      if (command_.operands[i].required) {
        return UsageError{inCommand(command_, command_.operands[i].value + " is missing"), tryHelp(command_)};
      }
    }
    return std::nullopt;
  }

  const CommandRow& command_;
  const std::vector<std::string>& words_;
  std::size_t next_;
  std::size_t operands_ = 0;
  bool onlyOperands_ = false;
  std::vector<const OptionRow*> given_;
  std::optional<UsageError> error_;
};

/// The command that does what users of other programs look for under this name.
std::optional<std::string> meantBy(const std::string& typed) {
  static const std::map<std::string_view, const char*> commands = {
      {"check", "analyze"},  {"info", "analyze"}, {"status", "analyze"}, {"test", "verify"},  {"list", "survey"},
      {"ls", "survey"},      {"scan", "survey"},  {"rename", "fix"},     {"renumber", "fix"}, {"correct", "fix"},
      {"show", "draw"},      {"view", "draw"},    {"svg", "draw"},       {"print", "report"}, {"html", "report"},
      {"repair", "suggest"}, {"restore", "undo"}, {"revert", "undo"},    {"text", "dump"},    {"names", "instruments"}};
  const auto found = commands.find(typed);
  return found == commands.end() ? std::nullopt : std::optional<std::string>(found->second);
}

}  // namespace

UsageError unknownCommand(const CommandTable& table, const std::string& typed) {
  const auto meant = meantBy(typed);
  return {"unknown command: " + typed + didYouMean(meant ? meant : nearestWord(typed, commandNames(table))),
          helpOf(table.program) + " lists the commands."};
}

UsageError usageErrorOf(const CommandTable& table, const std::vector<std::string>& words,
                        const std::string& parserReason) {
  const auto isCommand = [](const std::string& word) { return !word.starts_with('-'); };
  const auto typed = std::find_if(words.begin(), words.end(), isCommand);
  const std::vector<std::string> before(words.begin(), typed);
  const auto command = std::find_if(table.commands.begin(), table.commands.end(),
                                    [&](const CommandRow& row) { return typed != words.end() && row.name == *typed; });
  const bool isKnown = command != table.commands.end();
  if (auto error = CommandWords(table.program, before, 0).findError()) {
    const auto misplaced = std::find_if(before.begin(), before.end(), [&](const std::string& option) {
      return isKnown && findOption(table.program, option) == nullptr && findOption(*command, option) != nullptr;
    });
    return misplaced == before.end()
               ? *error
               : UsageError{"unknown option: " + *misplaced,
                            "Options come after the command: kivsys " + command->name + " " + *misplaced};
  }
  if (typed == words.end()) {
    return {"name a command", tryHelp(table.program)};
  }
  if (!isKnown) {
    return unknownCommand(table, *typed);
  }
  const auto error = CommandWords(*command, words, before.size() + 1).findError();
  return error ? *error : UsageError{inCommand(*command, parserReason), tryHelp(*command)};
}

int printUsageError(const UsageError& error) {
  printError(error.reason);
  NativeSystem::writeError(error.hint + "\n");
  return exit_status::wrongUsage;
}

}  // namespace kiv
