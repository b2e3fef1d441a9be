// Each step of the work alone, on pages of 8, 32 and 131 KB in memory.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "analysis/page_checks.h"
#include "analysis/page_systems.h"
#include "analysis/read_bar_data.h"
#include "analysis/report.h"
#include "bench/pages.h"
#include "conversion/barlines.h"
#include "conversion/insert_staff.h"
#include "conversion/set_staff_attributes.h"
#include "mus/reader.h"
#include "mus/sort_item_table.h"
#include "mus/writer.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "sort/sort_on_instrument.h"
#include "tests/support/fixed_machine.h"

namespace kiv::bench {
namespace {

const std::string pageName = "C:\\PAGE1.MUS";

/// Files in memory that can be read; what is written is discarded, so that only the system's own work is measured.
class DiscardingFiles : public OverlayFiles {
 public:
  using OverlayFiles::OverlayFiles;

  std::unique_ptr<OutputFile> openOutput(const std::string& /*name*/) override {
    return std::make_unique<DiscardingOutput>();
  }
  std::optional<std::string> replaceFile(const std::string& /*name*/, std::string_view bytes) override {
    benchmark::DoNotOptimize(bytes.data());
    return std::nullopt;
  }

 private:
  class DiscardingOutput : public OutputFile {
   public:
    std::optional<std::string> write(std::string_view bytes) override {
      benchmark::DoNotOptimize(bytes.data());
      return std::nullopt;
    }
  };
};

/// One page in memory, and what surrounds a step that works on it.
class OnePage {
 public:
  explicit OnePage(const benchmark::State& state) {
    const PageShape shape = state.range(0) == 8 ? page8 : state.range(0) == 32 ? page32 : page131;
    files.addFile(pageName, makePage(shape));
  }

  const std::string& bytes() { return *files.find(pageName); }
  void report(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes().size()));
  }

  test::FixedMachine machine;
  DiscardingFiles files{"C:", machine};
  SilentUser user;
};

std::vector<Item> itemsOf(const ItemTable& table) {
  std::vector<Item> items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    items.push_back(table.item(i));
  }
  return items;
}

/// Puts back what a step has changed, off the clock.
void restore(benchmark::State& state, const std::vector<Item>& items, ItemTable& table) {
  state.PauseTiming();
  table.clear();
  for (const Item& item : items) {
    table.store_item(item);
  }
  state.ResumeTiming();
}

void walk(benchmark::State& state) {
  OnePage page(state);
  while (state.KeepRunning()) {
    PageWalker walker(page.bytes());
    while (walker.findItem() == ReadStatus::itemRead) {
      benchmark::DoNotOptimize(walker.type());
    }
  }
  page.report(state);
}

void readAndDecode(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  while (state.KeepRunning()) {
    readFile(page.files, pageName, table);
  }
  page.report(state);
}

void readBars(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  BarDataReader reader(page.files, page.user, page.machine);
  while (state.KeepRunning()) {
    FirstClefTable firstClefs;
    table.clear();
    reader.readBarData(pageName, 0, table, firstClefs);
  }
  page.report(state);
}

void sortForAnalysis(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  FirstClefTable firstClefs;
  BarDataReader(page.files, page.user, page.machine).readBarData(pageName, 0, table, firstClefs);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, items, table);
    sort_item_table(table);
  }
  page.report(state);
}

void analyzePage(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  FirstClefTable firstClefs;
  PageReader reader(page.files, page.user, page.machine);
  Report report(page.files, page.machine);
  while (state.KeepRunning()) {
    std::int16_t systemBase = 0;
    reader.read({pageName, "", ""}, "", table, firstClefs);
    const TableRows rows(table);
    const PageSystems systems = numberSystems(table, rows.staves, systemBase);
    benchmark::DoNotOptimize(checkPage(table, rows, systems));
    report.writePage(table, rows);
  }
  page.report(state);
}

void encode(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.files, pageName, table);
  std::string bytes;
  while (state.KeepRunning()) {
    encodePage(pageName, table, bytes);
    benchmark::DoNotOptimize(bytes);
  }
  page.report(state);
}

void write(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.files, pageName, table);
  std::string buffer;
  while (state.KeepRunning()) {
    writeFile(page.files, pageName, table, buffer);
  }
  page.report(state);
}

void sortPerInstrument(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.files, pageName, table);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, items, table);
    sortOnInstrument(table);
  }
  page.report(state);
}

/// The instruments of the page, from the top down, and one more that it lacks.
void fillOrder(const ItemTable& table, std::int16_t missing, OrderTable& order) {
  std::vector<std::int16_t> instruments;
  for (int i = table.itemCount(); i >= 1; --i) {
    if (isStaff(table, i)) {
      instruments.push_back(static_cast<std::int16_t>(table.itemPar(i, par::instrument)));
    }
  }
  instruments.push_back(missing);
  setInstrumentOrder(instruments, order);
  setStaffAttributes(table, order);
  OrderEntry& entry = order.entry(order.count());
  entry = order.entry(1);
  entry.instr = missing;
}

void insertOneStaff(benchmark::State& state) {
  constexpr std::int16_t missing = 99;
  OnePage page(state);
  ItemTable table;
  readFile(page.files, pageName, table);
  OrderTable order;
  fillOrder(table, missing, order);
  BarlineList barlines = collectBarlines(table);
  sortBarlines(barlines);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, items, table);
    insertStaff(table, missing, order, {}, barlines);
  }
  page.report(state);
}

void sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgName("KB")->Arg(8)->Arg(32)->Arg(131)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(walk)->Apply(sizes);
BENCHMARK(readAndDecode)->Apply(sizes);
BENCHMARK(readBars)->Apply(sizes);
BENCHMARK(sortForAnalysis)->Apply(sizes);
BENCHMARK(analyzePage)->Apply(sizes);
BENCHMARK(encode)->Apply(sizes);
BENCHMARK(write)->Apply(sizes);
BENCHMARK(sortPerInstrument)->Apply(sizes);
BENCHMARK(insertOneStaff)->Apply(sizes);

}  // namespace
}  // namespace kiv::bench

BENCHMARK_MAIN();
