#include "apps/kivsys/commands/page_commands.h"

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/named_input.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/selection/selection.h"
#include "pagetext/page_text.h"
#include "platform/console/error_line.h"
#include "platform/console/guarded_system.h"

namespace kiv {
namespace {

/// Whether the file is called a page, as a damaged one is, too.
bool hasNameOfPage(NativeSystem& system, const std::string& file) {
  const std::string name = system.upperCase(file);
  return name.ends_with(".MUS") || name.ends_with(".PAG");
}

/// Why the page may not be written; nullopt when it may.
std::optional<std::string> refusalToReplace(NativeSystem& system, const PageFiles& files) {
  if (auto reason = refusalOfNewName(files.page, "file")) {
    return reason;
  }
  const std::string path = system.diskName(NativeSystem::coreName(files.page));
  InputFiles inputs;
  inputs.addTyped(system, files.text);
  if (auto reason = inputs.refusal("page", path)) {
    return reason;
  }
  if (kindOf(path) != PathKind::file) {
    return std::nullopt;
  }
  if (!files.force) {
    return files.page + " exists; --force replaces it";
  }
  const auto old = readBounded(system, NativeSystem::coreName(files.page), readableBytes).bytes;
  const bool isPageFile = hasNameOfPage(system, files.page) || (old && (old->empty() || isPage(*old)));
  return isPageFile ? std::nullopt
                    : std::optional(files.page + " is not a page, and is not replaced; name another file");
}

}  // namespace

int runDump(const std::string& page) {
  GuardedSystem system;
  const NamedInput file = readNamedInput(system, page, pageInput);
  return file.bytes ? printOutcome(dumpPage(*file.bytes), exit_status::normal) : file.status;
}

int runBuild(const PageFiles& files) {
  const std::string& page = files.page;
  GuardedSystem system;
  const NamedInput lines = readNamedInput(system, files.text, pageTextInput);
  if (!lines.bytes) {
    return lines.status;
  }
  const auto built = buildPage(*lines.bytes);
  if (const auto* error = std::get_if<PageTextError>(&built)) {
    return fail(files.text + ":" + std::to_string(error->line) + ": " + error->reason);
  }
  if (!describesPage(*lines.bytes)) {
    return fail(files.text + ": the text describes no page");
  }
  if (isStandardOutput(page)) {
    return printOutcome(std::get<std::string>(built), exit_status::normal);
  }
  if (const auto reason = refusalToReplace(system, files)) {
    return refuse({*reason});
  }
  const OldFile oldFile = files.force ? OldFile::alwaysReplaced : OldFile::kept;
  if (const auto failure = writeOutput(system, {"page", NativeSystem::coreName(page), OutputKind::page},
                                       std::get<std::string>(built), oldFile)) {
    return fail(notWritten(page, system.diskName(NativeSystem::coreName(page)), *failure));
  }
  return exit_status::normal;
}

}  // namespace kiv
