#include "apps/kivsys/usage/help_text.h"

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

#include "apps/kivsys/usage/wrapped_text.h"

namespace kiv {
namespace {

/// Two columns: what is described, and its description.
using Rows = std::vector<std::pair<std::string, std::string>>;

std::string withRows(const std::string& heading, const Rows& rows) {
  constexpr std::size_t widest = 24;
  constexpr std::size_t margin = 2;
  if (rows.empty()) {
    return "";
  }
  std::size_t width = 0;
  for (const auto& [name, help] : rows) {
    width = std::max(width, name.size() > widest ? 0 : name.size());
  }
  const std::size_t column = margin + width + margin;
  std::string text = "\n" + heading + ":\n";
  for (const auto& [name, help] : rows) {
    const bool isBeside = name.size() <= width;
    text +=
        "  " + name + (isBeside ? std::string(column - margin - name.size(), ' ') : "\n" + std::string(column, ' '));
    text += wrapped(help, column, column);
  }
  return text;
}

Rows optionRows(const CommandRow& command) {
  Rows rows;
  for (const OptionRow& option : command.options) {
    std::string names;
    for (const std::string& name : option.names) {
      names += (names.empty() ? "" : ", ") + name;
    }
    rows.emplace_back(names + (option.value.empty() ? "" : " " + option.value), option.help);
  }
  return rows;
}

std::string shownValue(const OperandRow& operand) {
  return operand.value + (operand.many ? "..." : "");
}

Rows operandRows(const CommandRow& command) {
  Rows rows;
  for (const OperandRow& operand : command.operands) {
    rows.emplace_back(shownValue(operand), operand.help);
  }
  return rows;
}

std::string usageOf(const CommandRow& command) {
  std::string usage = "Usage: kivsys " + command.name + " [OPTION]...";
  for (const OptionRow& option : command.options) {
    usage += option.required ? " " + option.names.back() + " " + option.value : "";
  }
  for (const OperandRow& operand : command.operands) {
    usage += " " + (operand.required ? shownValue(operand) : "[" + shownValue(operand) + "]");
  }
  return usage + "\n";
}

Rows statusRows() {
  return {{"0", "Done"},
          {"1",
           "A critical message ended the run, a page was skipped, a check failed, or a file cannot be read or written"},
          {"2", "Wrong usage: nothing was written"},
          {"3", "Not usable as it stands, with --exit-code or --strict"},
          {"4", "Another run is at work in the folder"},
          {"128 + n", "Signal n ended the run: 130 is Ctrl-C"}};
}

/// The footer's paragraphs in lines of the help; what is preformatted stays.
std::string footerText(const std::string& footer) {
  std::istringstream lines(footer);
  std::string text;
  std::string paragraph;
  const auto endParagraph = [&] {
    text += paragraph.empty() ? "" : wrapped(paragraph, 0, 0);
    paragraph.clear();
  };
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.starts_with("  ")) {
      endParagraph();
      text += line + "\n";
    } else {
      paragraph += line + "\n";
    }
  }
  endParagraph();
  return text.empty() ? "" : "\n" + text;
}

}  // namespace

std::string programHelp(const CommandTable& table) {
  Rows commands;
  for (const CommandRow& command : table.commands) {
    commands.emplace_back(command.name, command.help);
  }
  return wrapped(table.program.help, 0, 0) + "\nUsage: kivsys COMMAND [OPTION]...\n" + withRows("Commands", commands) +
         withRows("Options", optionRows(table.program)) + withRows("Exit status", statusRows()) +
         footerText(table.program.footer);
}

std::string commandHelp(const CommandRow& command) {
  return wrapped(command.help, 0, 0) + "\n" + usageOf(command) + withRows("Operands", operandRows(command)) +
         withRows("Options", optionRows(command)) + footerText(command.footer);
}

}  // namespace kiv
