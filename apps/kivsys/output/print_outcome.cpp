#include "apps/kivsys/output/print_outcome.h"

#include <iostream>

#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"

namespace kiv {

int printOutcome(const std::string& text, int status) {
  std::cout << text << std::flush;
  if (std::cout) {
    return status;
  }
  printError("cannot write to standard output");
  return exit_status::critical;
}

}  // namespace kiv
