#include "apps/kivsys/commands/page_commands.h"

#include <iostream>
#include <optional>
#include <sstream>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "pagetext/page_text.h"
#include "platform/console/native_system.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

int fail(const std::string& reason) {
  std::cerr << "kivsys: " << printable(reason) << '\n';
  return exit_status::critical;
}

std::optional<std::string> standardInput() {
  std::ostringstream text;
  text << std::cin.rdbuf();
  return std::cin.bad() ? std::nullopt : std::optional(text.str());
}

/// Why the page may not be written; nullopt when it may.
std::optional<std::string> refusalToReplace(NativeSystem& system, const PageFiles& files) {
  const std::string path = system.diskName(NativeSystem::coreName(files.page));
  if (files.text != "-") {
    InputFiles inputs;
    inputs.add(system.diskName(NativeSystem::coreName(files.text)));
    if (const auto reason = inputs.refusal("page", path)) {
      return reason;
    }
  }
  return kindOf(path) == PathKind::file && !files.force ? std::optional(files.page + " exists; --force replaces it")
                                                        : std::nullopt;
}

}  // namespace

int runDump(const std::string& page) {
  NativeSystem system;
  const auto file = readWhole(system, NativeSystem::coreName(page));
  if (!file) {
    const std::string reason = readFailure(system.diskName(NativeSystem::coreName(page))).value_or("I/O error");
    return refuse({"cannot read " + page + ": " + reason});
  }
  std::cout << dumpPage(*file) << std::flush;
  return std::cout ? exit_status::normal : fail("cannot write to standard output");
}

int runBuild(const PageFiles& files) {
  const std::string& text = files.text;
  const std::string& page = files.page;
  NativeSystem system;
  const auto lines = text == "-" ? standardInput() : readWhole(system, NativeSystem::coreName(text));
  if (!lines) {
    return fail("cannot read " + text);
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
