#include "apps/kivsys/commands/draw_command.h"

#include <iostream>
#include <vector>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "drawing/page_picture.h"
#include "input/file_names.h"
#include "mus/reader.h"
#include "platform/console/console_host.h"

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

}  // namespace

int runDraw(const DrawOptions& options) {
  ConsoleHost console;
  const std::string page = NativeSystem::coreName(options.page);
  ItemTable table;
  if (exitCodeOf(console.user(), [&] { readFile(console.system(), page, table); })) {
    return exit_status::critical;
  }
  const std::string title = NativeSystem::toUtf8(withoutPath(page));
  return deliver(console.system(), options.out == "-" ? "-" : NativeSystem::coreName(options.out),
                 pagePicture(itemsOf(table), title));
}

int deliver(Files& files, const std::string& out, const std::string& content) {
  if (out == "-") {
    return printOutcome(content, exit_status::normal);
  }
  if (const auto failure = files.replaceFile(out, content)) {
    std::cerr << "kivsys: cannot write " << out << ": " << *failure << '\n';
    return exit_status::critical;
  }
  return exit_status::normal;
}

}  // namespace kiv
