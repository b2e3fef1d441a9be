#include "apps/kivsys/output/print_outcome.h"

#include <iostream>

#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"

namespace kiv {

void OutputText::add(std::string_view text) {
  constexpr std::size_t enough = std::size_t{64} * 1024;
  if (pending_.size() + text.size() < enough) {
    pending_ += text;
    return;
  }
  std::cout << pending_ << text;
  pending_.clear();
}

void OutputText::flush() {
  std::cout << pending_ << std::flush;
  pending_.clear();
}

int printOutcome(std::string_view text, int status) {
  return printOutcome([&](OutputText& output) { output.add(text); }, status);
}

int printOutcome(const std::function<void(OutputText& text)>& addText, int status) {
  OutputText output;
  addText(output);
  output.flush();
  if (std::cout) {
    return status;
  }
  printError("cannot write to standard output");
  return exit_status::critical;
}

}  // namespace kiv
