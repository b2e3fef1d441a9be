#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "apps/kivsys/command_line.h"
#include "apps/kivsys/commands/analyze_command.h"
#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"
#include "platform/console/native_system.h"
#include "platform/console/stop_signals.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// The arguments as the one text that a sibling tool passes. In a call for an analysis the file name is written as the
/// core writes names.
std::string commandLineOf(int argc, const char* const* argv) {
  std::string line;
  for (int i = 1; i < argc; ++i) {
    line += (i > 1 ? " " : "") + std::string(argv[i]);
  }
  return isAnalysisMode(line) ? NativeSystem::coreName(line) : line;
}

/// A call has a comma in its first argument, which no command has: the names of pages may look like parts of a call.
bool isSiblingCall(const std::string& commandLine, std::string_view first) {
  return first.starts_with("CALLEDBY=") || (first.find(',') != std::string_view::npos && isAnalysisMode(commandLine));
}

int run(int argc, const char* const* argv) {
  NativeSystem::prepareProcess();
  const std::string commandLine = commandLineOf(argc, argv);
  return isSiblingCall(commandLine, argc > 1 ? argv[1] : "") ? runSiblingCall(commandLine) : runCommandLine(argc, argv);
}

/// Where not even an exception can be made, there is none.
bool isOutOfMemory(const std::exception_ptr& failure) {
  if (failure == nullptr) {
    return true;
  }
  try {
    std::rethrow_exception(failure);
  } catch (const std::bad_alloc&) {
    return true;
  } catch (...) {
    return false;
  }
}

/// Memory can be short where libraries allow no exception. Any other exception that nobody handles is a defect.
[[noreturn]] void endWithoutMemory() {
  if (isOutOfMemory(std::current_exception())) {
    static_cast<void>(std::fputs("kivsys: out of memory\n", stderr));
    std::_Exit(exit_status::critical);
  }
  std::abort();
}

}  // namespace
}  // namespace kiv

int main(int argc, char** argv) {
  std::set_terminate(kiv::endWithoutMemory);
  try {
    kiv::noteFileSizeSignal();
    return kiv::run(argc, argv);
  } catch (const std::bad_alloc&) {
    kiv::printError("out of memory");
    return kiv::exit_status::critical;
  } catch (const std::exception& failure) {
    kiv::printError(failure.what());
    return kiv::exit_status::critical;
  }
}
