#include <exception>
#include <iostream>
#include <string_view>

#include "bench/literal/convert.h"
#include "platform/console/console_host.h"
#include "shell/cmd_run.h"
#include "shell/start_up.h"

namespace kiv::literal {
namespace {

struct Arguments {
  std::string namesFile;
  std::string firstResultFile;
  bool noInstrNumber = false;
  bool forceZero = false;
  bool understood = true;
};

Arguments readArguments(int argc, const char* const* argv) {
  Arguments arguments;
  arguments.understood = argc >= 3;
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
      arguments.understood = false;
    }
  }
  return arguments;
}

/// False when the analysis ended in a critical message. One that finds nothing to convert is no reason to stop.
bool analyse(KivSystem& program) {
  try {
    cmdRun_Click(program);
  } catch (const ProgramEnd& end) {
    return end.exitCode == 0;
  }
  return program.names.nameCount > 0;
}

int runProgram(const Arguments& arguments) {
  ConsoleHost host;
  KivSystem program(host);
  prepareForPanel(program);
  program.settings.namesFile = host.fullName(arguments.namesFile);
  program.settings.allowZeroInstrId = arguments.forceZero;
  program.panel.chkShowInstrNumber.checked = !arguments.noInstrNumber;
  if (!analyse(program)) {
    return 1;
  }
  program.panel.txtFirstResultFile.text = host.fullName(arguments.firstResultFile);
  try {
    cmdConvert_Click(program);
  } catch (const ProgramEnd& end) {
    return end.exitCode;
  }
  return 0;
}

}  // namespace
}  // namespace kiv::literal

int main(int argc, char** argv) {
  const auto arguments = kiv::literal::readArguments(argc, argv);
  if (!arguments.understood) {
    std::cerr << "usage: literal_convert NAMES_FILE FIRST_RESULT_FILE [--no-instr-number] [--force-zero]\n";
    return 2;
  }
  try {
    return kiv::literal::runProgram(arguments);
  } catch (const std::exception& error) {
    std::cerr << "literal_convert: " << error.what() << '\n';
    return 1;
  }
}
