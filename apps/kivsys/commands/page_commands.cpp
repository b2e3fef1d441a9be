#include "apps/kivsys/commands/page_commands.h"

#include <iostream>
#include <optional>
#include <sstream>

#include "apps/kivsys/exit_status.h"
#include "pagetext/page_text.h"
#include "platform/console/native_system.h"

namespace kiv {
namespace {

int fail(const std::string& reason) {
  std::cerr << "kivsys: " << reason << '\n';
  return exit_status::critical;
}

std::optional<std::string> standardInput() {
  std::ostringstream text;
  text << std::cin.rdbuf();
  return std::cin.bad() ? std::nullopt : std::optional(text.str());
}

}  // namespace

int runDump(const std::string& page) {
  NativeSystem system;
  const auto file = readWhole(system, NativeSystem::coreName(page));
  if (!file) {
    return fail("cannot read " + page);
  }
  std::cout << dumpPage(*file) << std::flush;
  return std::cout ? exit_status::normal : fail("cannot write to standard output");
}

int runBuild(const std::string& text, const std::string& page) {
  NativeSystem system;
  const auto lines = text == "-" ? standardInput() : readWhole(system, NativeSystem::coreName(text));
  if (!lines) {
    return fail("cannot read " + text);
  }
  const auto built = buildPage(*lines);
  if (const auto* error = std::get_if<PageTextError>(&built)) {
    return fail(text + ":" + std::to_string(error->line) + ": " + error->reason);
  }
  if (const auto failure = system.replaceFile(NativeSystem::coreName(page), std::get<std::string>(built))) {
    return fail("cannot write " + page + ": " + *failure);
  }
  return exit_status::normal;
}

}  // namespace kiv
