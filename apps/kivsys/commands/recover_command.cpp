#include "apps/kivsys/commands/recover_command.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

#include <cstdio>
#include <optional>
#include <utility>
#include <vector>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/output/recovery_output.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/selection/selection.h"
#include "input/file_names.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/console/guarded_system.h"
#include "platform/console/page_text_file.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/console/standard_input.h"
#include "repair/recovery.h"
#include "survey/survey.h"

namespace kiv {
namespace {

/// What the name of a recovered page begins with. The number and the page letter stay at its end, where pages have
/// them, and it belongs to another piece than the damaged page.
constexpr const char* namePrefix = recoveredPrefix;
#ifdef _WIN32
constexpr const char* folderEnds = "/\\:";
#else
constexpr const char* folderEnds = "/";
#endif

/// Many times what a page can have: a damaged one may be followed by anything.
constexpr std::size_t mostBytes = 16 * most_bytes::mebibyte;

/// Pages pass through the standard streams byte for byte.
void useBinaryStreams() {
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
#endif
}

/// The bytes of the damaged page. Nullopt when there are none, and the status of the run then.
std::optional<std::string> read(NativeSystem& system, const std::string& page, int& status) {
  const std::string name = page == standardOutput ? page : NativeSystem::coreName(page);
  BoundedContent content = page == standardOutput ? readStandardInput(mostBytes) : readBounded(system, name, mostBytes);
  if (content.isTooLarge) {
    status = fail(page + " " + tooLarge(mostBytes, "a damaged page"));
  } else if (!content.bytes && page == standardOutput) {
    status = fail("cannot read standard input");
  } else if (!content.bytes) {
    status = refuse({"cannot read " + page + ": " + readFailure(system.diskName(name)).value_or("I/O error")});
  }
  return std::move(content.bytes);
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
  return justPath(system, page) + namePrefix + withoutPath(system, page);
}

/// The same name for the user, who knows the page by the name that was typed.
std::string shownOutput(const RecoverOptions& options) {
  if (!options.out.empty() || options.page == standardOutput) {
    return options.out.empty() || options.out == standardOutput ? "standard output" : options.out;
  }
  const std::size_t folder = options.page.find_last_of(folderEnds) + 1;  // 0 when there is none
  return options.page.substr(0, folder) + namePrefix + options.page.substr(folder);
}

/// Why the page may not be written: it is the damaged one. Nullopt when it is another file.
std::optional<std::string> refusalOfInput(NativeSystem& system, const RecoverOptions& options,
                                          const std::string& output) {
  InputFiles inputs;
  inputs.addTyped(system, options.page);
  return output == standardOutput ? std::nullopt : inputs.refusal("recovered page", system.diskName(output));
}

/// Why the file that is there is not replaced. None: it may be, or there is none.
std::vector<std::string> refusalsToReplace(NativeSystem& system, const RecoverOptions& options,
                                           const std::string& output) {
  auto reasons = refusalsOfOutput(system, {"recovered page", output, OutputKind::page}, InputFiles());
  const bool isFile = output != standardOutput && kindOf(system.diskName(output)) == PathKind::file;
  if (reasons.empty() && isFile && !options.force) {
    reasons.push_back(system.diskName(output) + " exists; --force replaces it");
  }
  return reasons;
}

/// Prints the report, to standard error when the page itself goes to standard output, and what to do next.
int print(const repair::Recovery& recovery, const RecoveryReport& report, const RecoverOptions& options,
          bool pageIsPrinted) {
  const std::string text = options.json ? asJson(recovery, report) : asText(recovery, report);
  const bool isAnything = recovery.isWhole || !recovery.items.empty();
  int status = isAnything ? exit_status::normal : exit_status::critical;
  if (!pageIsPrinted) {
    status = printOutcome(text, status);
  } else if (!options.quiet) {
    NativeSystem::writeError(text);
  }
  if (report.next && !options.json && !options.quiet) {
    NativeSystem::writeError("Next: " + *report.next + "\n");
  }
  return status;
}

/// The command line that puts the recovered page in the place of the damaged one, which is kept; none when a name
/// cannot be shown.
std::optional<std::string> stepToReplace(const std::string& page, const std::string& recovered) {
#ifdef _WIN32
  constexpr const char* move = "move ";
#else
  constexpr const char* move = "mv ";
#endif
  if (printable(page + recovered) != page + recovered) {
    return std::nullopt;
  }
  const std::string damaged = fileWord(page);
  return move + damaged + " " + fileWord(page + ".damaged") + " && " + move + fileWord(recovered) + " " + damaged;
}

/// Reports bytes of which no page is made: they are one already, or nothing can be recovered.
int reportOnly(const repair::Recovery& recovery, RecoveryReport report, const RecoverOptions& options,
               const std::string& bytes) {
  const NoPage kind = recovery.isWhole ? NoPage::none : noPageIn(bytes);
  report.mistaken = wordsOf(kind);
  const bool canBuild = kind == NoPage::pageText && options.page != standardOutput;
  if (canBuild && printable(options.page) == options.page) {
    report.next = buildCommand(options.page);
  }
  return print(recovery, report, options, false);
}

/// Writes the page, if this is no dry run. Returns the failure's line.
std::optional<std::string> write(NativeSystem& system, const std::string& page, const RecoverOptions& options,
                                 const std::string& output) {
  if (options.dryRun) {
    return std::nullopt;
  }
  if (options.page != standardOutput) {
    system.keepPrivacyOf(system.diskName(NativeSystem::coreName(options.page)));
  }
  const auto failure = writeOutput(system, {"recovered page", output, OutputKind::page}, page,
                                   options.force ? OldFile::replaced : OldFile::kept);
  return failure ? std::optional(notWritten(shownOutput(options), system.diskName(output), *failure)) : std::nullopt;
}

/// Recovers the page of these bytes.
int recoverBytes(NativeSystem& system, const std::string& bytes, const RecoverOptions& options) {
  const repair::Recovery recovery = repair::recover(bytes);
  RecoveryReport report{options.page == standardOutput ? "standard input" : options.page, "", options.dryRun};
  const std::string output = outputOf(system, options);
  if (recovery.isWhole && output == standardOutput && !options.dryRun) {
    const int status = printOutcome(bytes, exit_status::normal);  // whoever reads it gets a page in any case
    return status == exit_status::normal ? print(recovery, report, options, true) : status;
  }
  if (recovery.isWhole || recovery.items.empty()) {
    return reportOnly(recovery, report, options, bytes);
  }
  if (const auto reason = refusalOfInput(system, options, output)) {
    return refuse({*reason});
  }
  report.refusals = refusalsToReplace(system, options, output);
  if (!report.refusals.empty() && !options.dryRun) {
    return refuse(report.refusals);
  }
  const bool isPrinted = output == standardOutput;
  report.written = isPrinted ? "standard output" : system.diskName(output);
  report.shown = shownOutput(options);
  if (const auto failure = write(system, repair::recoveredPage(bytes, recovery), options, output)) {
    return fail(*failure);
  }
  if (options.out.empty() && !isPrinted && !options.dryRun) {
    report.next = stepToReplace(options.page, report.shown);
  }
  return print(recovery, report, options, isPrinted && !options.dryRun);
}

}  // namespace

int runRecover(const RecoverOptions& options) {
  GuardedSystem system;
  if (options.page == standardOutput || options.out == standardOutput) {
    useBinaryStreams();
  }
  if (const auto reason = options.page == standardOutput ? std::nullopt : refusalOfName(options.page, "file")) {
    return refuse({*reason});
  }
  int status = exit_status::normal;
  const auto bytes = read(system, options.page, status);
  return bytes ? recoverBytes(system, *bytes, options) : status;
}

}  // namespace kiv
