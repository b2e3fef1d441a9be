#include "apps/kivsys/command_table.h"

#include <map>

#include <CLI/CLI.hpp>

namespace kiv {
namespace {

constexpr const char* staffOfPage = "PAGE:STAFF=ID";

/// The name of the value, without the range that it is checked for.
std::string valueOf(const CLI::Option& option) {
  const std::string name = option.get_type_name();
  return name == staffOfPage ? name : name.substr(0, name.find(':'));
}

ValueKind kindOfValue(const std::string& value) {
  static const std::map<std::string, ValueKind> kinds = {
      {"", ValueKind::none},          {"DIR", ValueKind::folder},    {"FOLDER", ValueKind::folder},
      {"FILE", ValueKind::file},      {"FILE.svg", ValueKind::file}, {"FILE.csv", ValueKind::file},
      {"FILE.html", ValueKind::file}, {"TEXT", ValueKind::file},     {"PAGE", ValueKind::page},
      {staffOfPage, ValueKind::page}, {"SHELL", ValueKind::shell},   {"COMMAND", ValueKind::command}};
  const auto found = kinds.find(value);
  return found == kinds.end() ? ValueKind::word : found->second;
}

OptionRow optionRow(const CLI::Option& option) {
  OptionRow row;
  for (const std::string& name : option.get_snames()) {
    row.names.push_back("-" + name);
  }
  for (const std::string& name : option.get_lnames()) {
    row.names.push_back("--" + name);
  }
  // A flag has a value type, too, which no user writes.
  row.value = option.get_items_expected_max() == 0 ? "" : valueOf(option);
  row.kind = kindOfValue(row.value);
  row.help = option.get_description();
  row.required = option.get_required();
  return row;
}

OperandRow operandRow(const CLI::Option& option) {
  const std::string value = valueOf(option);
  return {value, kindOfValue(value), option.get_description(), option.get_required(),
          option.get_items_expected_max() > 1};
}

CommandRow commandRow(const CLI::App& app) {
  CommandRow row{app.get_name(), app.get_description(), app.get_footer(), {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional()) {
      row.operands.push_back(operandRow(*option));
    } else {
      row.options.push_back(optionRow(*option));
    }
  }
  return row;
}

}  // namespace

CommandTable tableOf(const CLI::App& app) {
  CommandTable table{commandRow(app), {}};
  for (const CLI::App* command : app.get_subcommands({})) {
    table.commands.push_back(commandRow(*command));
  }
  return table;
}

ValueKind valueKindOf(const CLI::Option& option) {
  return kindOfValue(valueOf(option));
}

std::vector<std::string> commandNames(const CommandTable& table) {
  std::vector<std::string> names;
  for (const CommandRow& command : table.commands) {
    names.push_back(command.name);
  }
  return names;
}

}  // namespace kiv
