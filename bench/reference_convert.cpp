// Analyzes the pages of a names file, and converts them with the reference implementation.
//
// reference_convert NAMES_FILE FIRST_RESULT_FILE [--no-instr-number] [--force-zero]

#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "platform/console/console_host.h"
#include "shell/cmd_run.h"
#include "shell/start_up.h"
#include "tests/reference/convert_group.h"

namespace kiv::bench {
namespace {

struct Arguments {
  std::string namesFile;
  std::string firstResultFile;
  bool noInstrNumber = false;
  bool forceZero = false;
  bool valid = true;
};

Arguments readArguments(int argc, const char* const* argv) {
  Arguments arguments;
  arguments.valid = argc >= 3;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (i == 1) {
      arguments.namesFile = word;
    } else if (i == 2) {
      arguments.firstResultFile = word;
    } else if (word == "--no-instr-number") {
      arguments.noInstrNumber = true;
    } else if (word == "--force-zero") {
      arguments.forceZero = true;
    } else {
      arguments.valid = false;
    }
  }
  return arguments;
}

/// False when there is nothing to convert. A group that needs no conversion is converted all the same.
bool analyze(KivSystem& program) {
  const auto exitCode = exitCodeOf(program.host.user, [&] { cmdRun_Click(program); });
  return exitCode.value_or(0) == 0 && program.names.nameCount > 0;
}

int runProgram(const Arguments& arguments) {
  ConsoleHost console;
  KivSystem program(console.host());
  prepareForPanel(program);
  program.settings.namesFile = console.system().fullName(arguments.namesFile);
  program.settings.allowZeroInstrId = arguments.forceZero;
  if (!analyze(program)) {
    return 1;
  }
  reference::Tables tables;
  const reference::Options options{console.system().fullName(arguments.firstResultFile), true,
                                   !arguments.noInstrNumber};
  return exitCodeOf(
             console.user(),
             [&] { console.user().show(reference::convertGroup(console.host(), program.firstClefs, options, tables)); })
      .value_or(0);
}

}  // namespace
}  // namespace kiv::bench

int main(int argc, char** argv) {
  const auto arguments = kiv::bench::readArguments(argc, argv);
  if (!arguments.valid) {
    std::cerr << "usage: reference_convert NAMES_FILE FIRST_RESULT_FILE [--no-instr-number] [--force-zero]\n";
    return 2;
  }
  try {
    return kiv::bench::runProgram(arguments);
  } catch (const std::exception& error) {
    std::cerr << "reference_convert: " << error.what() << '\n';
    return 1;
  }
}
