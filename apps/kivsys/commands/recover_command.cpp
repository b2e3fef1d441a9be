#include "apps/kivsys/commands/recover_command.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include <cstdio>
#include <iostream>
#include <iterator>
#include <optional>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/recovery_output.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "input/file_names.h"
#include "repair/recovery.h"

namespace kiv {
namespace {

/// What the name of a recovered page begins with. The number and the page letter stay at its end, where pages have
/// them, and it belongs to another piece than the damaged page.
constexpr const char* namePrefix = "RECOVERED-";

/// Pages pass through the standard streams byte for byte.
void useBinaryStreams() {
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
#endif
}

int fail(const std::string& reason) {
  std::cerr << "kivsys: " << reason << '\n';
  return exit_status::critical;
}

std::optional<std::string> standardInput() {
  std::string bytes{std::istreambuf_iterator<char>(std::cin), {}};
  return std::cin.bad() ? std::nullopt : std::optional(std::move(bytes));
}

/// The name of the page to write: as it was typed, or one beside the damaged page.
std::string outputOf(NativeSystem& system, const RecoverOptions& options) {
  if (!options.out.empty()) {
    return outputName(system, options.out);
  }
  if (options.page == standardOutput) {
    return standardOutput;
  }
  const std::string page = system.fullName(options.page);
  return justPath(page) + namePrefix + withoutPath(page);
}

/// Why the page may not be written; nullopt when it may.
std::optional<std::string> refusalToWrite(NativeSystem& system, const RecoverOptions& options,
                                          const std::string& output) {
  if (output == standardOutput) {
    return std::nullopt;
  }
  const std::string path = system.diskName(output);
  InputFiles inputs;
  if (options.page != standardOutput) {
    inputs.add(system.diskName(system.fullName(options.page)));
  }
  if (const auto reason = inputs.refusal("recovered page", path)) {
    return reason;
  }
  const bool isKept = kindOf(path) == PathKind::file && !options.force;
  return isKept ? std::optional(path + " exists; --force replaces it") : std::nullopt;
}

/// Prints to standard error when the page itself goes to standard output.
int print(const repair::Recovery& recovery, const RecoveryReport& report, const RecoverOptions& options,
          bool pageIsPrinted) {
  std::ostream& stream = pageIsPrinted ? std::cerr : std::cout;
  stream << (options.json ? asJson(recovery, report) : asText(recovery, report)) << std::flush;
  const bool isAnything = recovery.isWhole || !recovery.items.empty();
  return stream ? (isAnything ? exit_status::normal : exit_status::critical) : fail("cannot write to standard output");
}

/// Recovers the page of these bytes.
int recoverBytes(NativeSystem& system, const std::string& bytes, const RecoverOptions& options) {
  const repair::Recovery recovery = repair::recover(bytes);
  RecoveryReport report{options.page == standardOutput ? "standard input" : options.page, "", options.dryRun};
  if (recovery.isWhole || recovery.items.empty()) {
    return print(recovery, report, options, false);
  }
  const std::string output = outputOf(system, options);
  if (const auto reason = refusalToWrite(system, options, output)) {
    return refuse({*reason});
  }
  const bool isPrinted = output == standardOutput;
  report.written = isPrinted ? "standard output" : system.diskName(output);
  if (!options.dryRun) {
    if (const auto failure = writeOutput(system, output, repair::recoveredPage(bytes, recovery))) {
      return fail("cannot write " + report.written + ": " + *failure);
    }
  }
  return print(recovery, report, options, isPrinted && !options.dryRun);
}

}  // namespace

int runRecover(const RecoverOptions& options) {
  NativeSystem system;
  if (options.page == standardOutput || options.out == standardOutput) {
    useBinaryStreams();
  }
  if (options.page == standardOutput) {
    const auto bytes = standardInput();
    return bytes ? recoverBytes(system, *bytes, options) : fail("cannot read standard input");
  }
  const auto bytes = readWhole(system, NativeSystem::coreName(options.page));
  if (!bytes) {
    const std::string path = system.diskName(NativeSystem::coreName(options.page));
    return refuse({"cannot read " + options.page + ": " + readFailure(path).value_or("I/O error")});
  }
  return recoverBytes(system, *bytes, options);
}

}  // namespace kiv
