#include "apps/kivsys/commands/page_commands.h"

#include <iostream>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "mus/format.h"
#include "pagetext/page_text.h"
#include "platform/bounded_file.h"
#include "platform/console/error_line.h"
#include "platform/console/native_system.h"
#include "platform/console/standard_input.h"

namespace kiv {
namespace {

int fail(const std::string& reason) {
  printError(reason);
  return exit_status::critical;
}

/// Says why a file has no content.
int failRead(const BoundedContent& content, const std::string& name, std::size_t limit, std::string_view kind) {
  return fail(content.isTooLarge ? name + " " + tooLarge(limit, kind) : "cannot read " + name);
}

/// Whether the file is called a page, as a damaged one is, too.
bool hasNameOfPage(NativeSystem& system, const std::string& file) {
  const std::string name = system.upperCase(file);
  return name.ends_with(".MUS") || name.ends_with(".PAG");
}

/// Why the page may not be written; nullopt when it may.
std::optional<std::string> refusalToReplace(NativeSystem& system, const PageFiles& files) {
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
  NativeSystem system;
  const BoundedContent file = readBounded(system, NativeSystem::coreName(page), readableBytes);
  if (file.isTooLarge) {
    return failRead(file, page, readableBytes, "a page");
  }
  if (!file.bytes) {
    const std::string reason = readFailure(system.diskName(NativeSystem::coreName(page))).value_or("I/O error");
    return refuse({"cannot read " + page + ": " + reason});
  }
  std::cout << dumpPage(*file.bytes) << std::flush;
  return std::cout ? exit_status::normal : fail("cannot write to standard output");
}

int runBuild(const PageFiles& files) {
  const std::string& text = files.text;
  const std::string& page = files.page;
  NativeSystem system;
  const BoundedContent lines = text == "-" ? readStandardInput(most_bytes::pageText)
                                           : readBounded(system, NativeSystem::coreName(text), most_bytes::pageText);
  if (!lines.bytes) {
    return failRead(lines, text, most_bytes::pageText, "a page text");
  }
  const auto built = buildPage(*lines.bytes);
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
