#include "apps/kivsys/commands/page_commands.h"

#include <iostream>
#include <utility>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "mus/format.h"
#include "pagetext/page_text.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/console/guarded_system.h"
#include "platform/console/standard_input.h"

namespace kiv {
namespace {

int fail(const std::string& reason) {
  printError(reason);
  return exit_status::critical;
}

/// What can be read of a file, and what it is.
struct ReadableFile {
  std::string name;  ///< as it was typed; "-" is standard input
  std::string kind;  ///< "a page"
  std::size_t limit = 0;
};

/// The content of a file. Nullopt, after a line on standard error, when there is none; then the status of the run.
std::optional<std::string> read(NativeSystem& system, const ReadableFile& file, int& status) {
  const bool isInput = file.name == "-";
  if (NativeSystem::isBeyondNames(file.name)) {
    status = refuse({"a file whose name holds a backslash cannot be used: " + file.name});
    return std::nullopt;
  }
  BoundedContent content =
      isInput ? readStandardInput(file.limit) : readBounded(system, NativeSystem::coreName(file.name), file.limit);
  if (content.isTooLarge) {
    status = fail(file.name + " " + tooLarge(file.limit, file.kind));
  } else if (!content.bytes) {
    const std::string path = system.diskName(NativeSystem::coreName(file.name));
    const auto reason = isInput ? std::nullopt : readFailure(path);
    status = refuse({"cannot read " + file.name + ": " + reason.value_or("I/O error")});
  }
  return std::move(content.bytes);
}

/// Whether the file is called a page, as a damaged one is, too.
bool hasNameOfPage(NativeSystem& system, const std::string& file) {
  const std::string name = system.upperCase(file);
  return name.ends_with(".MUS") || name.ends_with(".PAG");
}

/// Why the page may not be written; nullopt when it may.
std::optional<std::string> refusalToReplace(NativeSystem& system, const PageFiles& files) {
  if (NativeSystem::isBeyondNames(files.page)) {
    return "a file whose name holds a backslash cannot be used: " + files.page;
  }
  const std::string path = system.diskName(NativeSystem::coreName(files.page));
  if (files.text != "-") {
    InputFiles inputs;
    inputs.add(system.diskName(NativeSystem::coreName(files.text)));
    if (auto reason = inputs.refusal("page", path)) {
      return reason;
    }
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
  int status = exit_status::normal;
  const auto bytes = read(system, {page, "a page", readableBytes}, status);
  if (!bytes) {
    return status;
  }
  std::cout << dumpPage(*bytes) << std::flush;
  return std::cout ? exit_status::normal : fail("cannot write to standard output");
}

int runBuild(const PageFiles& files) {
  const std::string& text = files.text;
  const std::string& page = files.page;
  GuardedSystem system;
  int status = exit_status::normal;
  const auto lines = read(system, {text, "a page text", most_bytes::pageText}, status);
  if (!lines) {
    return status;
  }
  const auto built = buildPage(*lines);
  if (const auto* error = std::get_if<PageTextError>(&built)) {
    return fail(text + ":" + std::to_string(error->line) + ": " + error->reason);
  }
  if (const auto reason = refusalToReplace(system, files)) {
    return refuse({*reason});
  }
  if (const auto failure = writeOutput(system, NativeSystem::coreName(page), std::get<std::string>(built))) {
    return fail("cannot write " + page + ": " + *failure);
  }
  return exit_status::normal;
}

}  // namespace kiv
