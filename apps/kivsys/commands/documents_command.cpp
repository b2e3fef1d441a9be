#include "apps/kivsys/commands/documents_command.h"

#include <iostream>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/shells/completions.h"
#include "apps/kivsys/shells/man_page.h"
#include "platform/console/error_line.h"

namespace kiv {
namespace {

int print(const std::string& text) {
  if (std::cout << text << std::flush) {
    return exit_status::normal;
  }
  printError("cannot write standard output");
  return exit_status::critical;
}

}  // namespace

int runCompletions(const CommandTable& table, const std::string& shell) {
  return print(completionsFor(table, shell));
}

int runMan(const CommandTable& table) {
  return print(manPage(table));
}

}  // namespace kiv
