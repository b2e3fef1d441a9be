#include "apps/kivsys/commands/draw_command.h"

#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/named_input.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/selection/selection.h"
#include "drawing/page_layout.h"
#include "drawing/page_picture.h"
#include "input/file_names.h"
#include "mus/reader.h"
#include "music/music_faults.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/memory/overlay_files.h"

namespace kiv {
namespace {

/// The items of the table, their texts in UTF-8.
std::vector<Item> itemsOf(const ItemTable& table) {
  std::vector<Item> items(static_cast<std::size_t>(table.itemCount()));
  for (int i = 1; i <= table.itemCount(); ++i) {
    Item& item = items[static_cast<std::size_t>(i - 1)];
    for (int p = 1; p <= parameterCount; ++p) {
      item[p] = table.itemPar(i, p);
    }
    item.text = NativeSystem::toUtf8(table.itemText(i));
  }
  return items;
}

/// What does not fit the music, in each system of a page.
std::vector<PageMark> marksOf(const std::vector<Item>& items) {
  struct System {
    std::vector<Item> items;
    std::set<float> restStaves;
  };
  std::map<std::size_t, System> systems;
  std::map<float, std::size_t> systemOf;
  for (const PlacedStaff& staff : layOut(items).staves) {
    systemOf[staff.number] = staff.system;
    if (staff.isGenerated) {
      systems[staff.system].restStaves.insert(staff.number);
    }
  }
  for (const Item& item : items) {
    const auto system = std::isnan(item[par::staff]) ? systemOf.end() : systemOf.find(item[par::staff]);
    if (system != systemOf.end()) {
      systems[system->second].items.push_back(item);
    }
  }
  std::vector<PageMark> marks;
  for (const auto& [number, system] : systems) {
    for (const PageFault& fault : findPageFaults(system.items, system.restStaves)) {
      marks.push_back({fault.place.staff, fault.place.bar->first, fault.place.bar->second, fault.words});
    }
  }
  return marks;
}

std::vector<std::string> refusals(ConsoleSystem& system, const DrawOptions& options, const std::string& out) {
  InputFiles inputs;
  if (options.page == standardInput) {
    inputs.addStandardInput();
  } else {
    if (const auto reason = refusalOfName(options.page, "file")) {
      return {*reason};
    }
    const std::string path = system.diskName(NativeSystem::coreName(options.page));
    if (const auto reason = whyUnreadable(options.page, path)) {
      return {*reason};
    }
    inputs.add(path);
  }
  return refusalsOfOutput(system, {"drawing", out, OutputKind::drawing}, inputs);
}

/// Draws a page of the files into the output.
int drawPage(ConsoleHost& console, Files& files, const std::string& page, const std::string& out) {
  ItemTable table;
  if (exitCodeOf(console.user(), [&] { readFile(files, page, table); })) {
    return exit_status::critical;
  }
  const bool isFile = page != standardInput;
  const std::string title = isFile ? NativeSystem::toUtf8(withoutPath(console.system(), page)) : "standard input";
  const std::vector<Item> items = itemsOf(table);
  return deliver(console.system(), out, pagePicture(items, title, marksOf(items)), OutputKind::drawing);
}

}  // namespace

int runDraw(const DrawOptions& options) {
  ConsoleHost console;
  console.useConsoleWords();
  if (options.quiet) {
    console.user().beQuiet();
  }
  ConsoleSystem& system = console.system();
  const std::string out = isStandardOutput(options.out) ? standardOutput : NativeSystem::coreName(options.out);
  if (const auto reasons = refusals(system, options, out); !reasons.empty()) {
    return refuse(reasons);
  }
  if (options.page != standardInput) {
    return drawPage(console, system, NativeSystem::coreName(options.page), out);
  }
  NamedInput input = readNamedInput(system, options.page, pageInput);
  if (!input.bytes) {
    return input.status;
  }
  OverlayFiles files(system, system);
  files.addFile(standardInput, std::move(*input.bytes));
  return drawPage(console, files, standardInput, out);
}

int deliver(ConsoleSystem& system, const std::string& out, const std::string& content, OutputKind kind) {
  if (out == standardOutput) {
    return printOutcome(content, exit_status::normal);
  }
  if (const auto failure = writeOutput(system, {"output", out, kind}, content)) {
    printError(notWritten(system.shownName(out), system.diskName(out), *failure));
    return exit_status::critical;
  }
  return exit_status::normal;
}

}  // namespace kiv
