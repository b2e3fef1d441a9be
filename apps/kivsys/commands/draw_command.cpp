#include "apps/kivsys/commands/draw_command.h"

#include <vector>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "drawing/page_picture.h"
#include "input/file_names.h"
#include "mus/reader.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"

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

std::vector<std::string> refusals(ConsoleSystem& system, const DrawOptions& options, const std::string& page,
                                  const std::string& out) {
  if (NativeSystem::isBeyondNames(options.page)) {
    return {"a file whose name holds a backslash cannot be used: " + options.page};
  }
  const std::string path = system.diskName(page);
  if (const auto failure = readFailure(path)) {
    return {"cannot read " + options.page + ": " + *failure};
  }
  InputFiles inputs;
  inputs.add(path);
  return refusalsOfOutput(system, {"drawing", out, OutputKind::drawing}, inputs);
}

}  // namespace

int runDraw(const DrawOptions& options) {
  ConsoleHost console;
  const std::string page = NativeSystem::coreName(options.page);
  const std::string out = isStandardOutput(options.out) ? standardOutput : NativeSystem::coreName(options.out);
  if (const auto reasons = refusals(console.system(), options, page, out); !reasons.empty()) {
    return refuse(reasons);
  }
  ItemTable table;
  if (exitCodeOf(console.user(), [&] { readFile(console.system(), page, table); })) {
    return exit_status::critical;
  }
  const std::string title = NativeSystem::toUtf8(withoutPath(console.system(), page));
  return deliver(console.system(), out, pagePicture(itemsOf(table), title));
}

int deliver(NativeSystem& system, const std::string& out, const std::string& content) {
  if (out == standardOutput) {
    return printOutcome(content, exit_status::normal);
  }
  if (const auto failure = writeOutput(system, out, content)) {
    printError("cannot write " + out + ": " + *failure);
    return exit_status::critical;
  }
  return exit_status::normal;
}

}  // namespace kiv
