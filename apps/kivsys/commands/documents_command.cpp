#include "apps/kivsys/commands/documents_command.h"

#include <algorithm>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/shells/completions.h"
#include "apps/kivsys/shells/man_page.h"
#include "apps/kivsys/usage/help_text.h"
#include "apps/kivsys/usage/usage_error.h"

namespace kiv {

int runHelp(const CommandTable& table, const std::string& command) {
  const auto found = std::find_if(table.commands.begin(), table.commands.end(),
                                  [&](const CommandRow& row) { return row.name == command; });
  if (!command.empty() && found == table.commands.end()) {
    return printUsageError(unknownCommand(table, command));
  }
  return printOutcome(command.empty() ? programHelp(table) : commandHelp(*found), exit_status::normal);
}

int runCompletions(const CommandTable& table, const std::string& shell) {
  return printOutcome(completionsFor(table, shell), exit_status::normal);
}

int runMan(const CommandTable& table) {
  return printOutcome(manPage(table), exit_status::normal);
}

}  // namespace kiv
