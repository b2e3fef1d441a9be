// Each step of the work alone, on pages of 8, 32 and 131 KB in memory.

#include <vector>

#include <benchmark/benchmark.h>

#include "analysis/page_checks.h"
#include "analysis/page_systems.h"
#include "analysis/read_bar_data.h"
#include "analysis/report.h"
#include "bench/memory_host.h"
#include "bench/pages.h"
#include "conversion/barlines.h"
#include "conversion/insert_staff.h"
#include "conversion/set_staff_attributes.h"
#include "mus/reader.h"
#include "mus/sort_item_table.h"
#include "mus/writer.h"
#include "sort/sort_on_instrument.h"

namespace kiv::bench {
namespace {

const std::string pageName = "C:\\PAGE1.MUS";

/// A host with one page on its disk.
class OnePage {
 public:
  explicit OnePage(const benchmark::State& state) {
    const PageShape shape = state.range(0) == 8 ? page8 : state.range(0) == 32 ? page32 : page131;
    host.files[pageName] = makePage(shape);
  }

  const std::string& bytes() const { return host.files.at(pageName); }
  void report(benchmark::State& state) const {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes().size()));
  }

  MemoryHost host;
};

std::vector<Item> itemsOf(const ItemTable& table) {
  std::vector<Item> items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    Item& item = items.emplace_back();
    for (int p = 1; p <= parameterCount; ++p) {
      item.par[static_cast<std::size_t>(p)] = table.itemPar(i, p);
    }
    item.text = table.itemText(i);
  }
  return items;
}

/// Puts back what a step has changed, off the clock.
void restore(benchmark::State& state, Host& host, const std::vector<Item>& items, ItemTable& table) {
  state.PauseTiming();
  table.restart();
  for (const Item& item : items) {
    table.store_item(host, item);
  }
  state.ResumeTiming();
}

void walk(benchmark::State& state) {
  const OnePage page(state);
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
    readFile(page.host, pageName, table);
  }
  page.report(state);
}

void readBars(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  MusReader reader;
  while (state.KeepRunning()) {
    FirstClefTable firstClefs;
    table.restart();
    readBarData(page.host, pageName, 0, table, firstClefs, reader);
  }
  page.report(state);
}

void sortForAnalysis(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  MusReader reader;
  FirstClefTable firstClefs;
  readBarData(page.host, pageName, 0, table, firstClefs, reader);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, page.host, items, table);
    sort_item_table(page.host, table);
  }
  page.report(state);
}

void analysePage(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  MusReader reader;
  FirstClefTable firstClefs;
  Report report(page.host);
  std::string musFileName;
  while (state.KeepRunning()) {
    std::int16_t systemBase = 0;
    readPage(page.host, {pageName, "", ""}, "", musFileName, table, firstClefs, reader);
    const PageSystems systems = numberSystems(page.host, musFileName, table, systemBase);
    benchmark::DoNotOptimize(checkPage(page.host, musFileName, table, systems));
    report.writePage(table);
  }
  page.report(state);
}

void encode(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.host, pageName, table);
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(encodePage(page.host, pageName, table));
  }
  page.report(state);
}

void write(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.host, pageName, table);
  while (state.KeepRunning()) {
    writeFile(page.host, pageName, table);
  }
  page.report(state);
}

void sortPerInstrument(benchmark::State& state) {
  OnePage page(state);
  ItemTable table;
  readFile(page.host, pageName, table);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, page.host, items, table);
    sortOnInstrument(page.host, pageName, table);
  }
  page.report(state);
}

/// The instruments of the page, from the top down, and one more that it lacks.
void fillOrder(Host& host, const ItemTable& table, std::int16_t missing, OrderTable& order) {
  std::vector<std::int16_t> instruments;
  for (int i = table.itemCount(); i >= 1; --i) {
    if (isStaff(table, i)) {
      instruments.push_back(static_cast<std::int16_t>(table.itemPar(i, par::instrument)));
    }
  }
  instruments.push_back(missing);
  setInstrumentOrder(host, instruments, order);
  setStaffAttributes(table, order);
  OrderEntry& entry = order.entry(order.count());
  entry = order.entry(1);
  entry.instr = missing;
}

void insertOneStaff(benchmark::State& state) {
  constexpr std::int16_t missing = 99;
  OnePage page(state);
  ItemTable table;
  readFile(page.host, pageName, table);
  const SystemPage system{page.host, pageName, table};
  OrderTable order;
  fillOrder(page.host, table, missing, order);
  BarlineList barlines = collectBarlines(system);
  sortBarlines(page.host, barlines);
  const std::vector<Item> items = itemsOf(table);
  while (state.KeepRunning()) {
    restore(state, page.host, items, table);
    insertStaff(system, missing, order, {}, barlines);
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
BENCHMARK(analysePage)->Apply(sizes);
BENCHMARK(encode)->Apply(sizes);
BENCHMARK(write)->Apply(sizes);
BENCHMARK(sortPerInstrument)->Apply(sizes);
BENCHMARK(insertOneStaff)->Apply(sizes);

}  // namespace
}  // namespace kiv::bench

BENCHMARK_MAIN();
