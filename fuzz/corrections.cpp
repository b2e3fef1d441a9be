// Any bytes as a table of corrections, and as a page that they are for: the page changes in its ids alone.

#include "repair/corrections.h"

#include <cstdint>
#include <string>

#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"
#include "repair/fix_plan.h"

namespace kiv::fuzz {
namespace {

using namespace kiv::repair;

/// The corrections as requests for one page.
std::vector<IdRequest> requestsOf(const Corrections& table) {
  std::vector<IdRequest> requests;
  for (const Correction& row : table.rows) {
    requests.push_back({"line", "PAGE", row.isCue, row.staff, row.item, row.oldId, row.newId});
  }
  return requests;
}

void checkTable(const Corrections& table) {
  std::size_t line = 0;
  for (const Correction& row : table.rows) {
    expect(row.line > line, "rows are in the order of their lines");
    expect(row.newId > 0 && !row.file.empty(), "a row has a file and an id");
    line = row.line;
  }
  line = 0;
  for (const CorrectionError& error : table.errors) {
    expect(error.line >= line && !error.reason.empty(), "errors are in the order of their lines");
    line = error.line;
  }
}

void checkPage(std::string_view page, const Corrections& table) {
  const auto ids = idsOf(page);
  if (!ids) {
    return;
  }
  const FixPlan plan = planFix({{"PAGE", *ids}}, requestsOf(table), {{"map", 1, 2}});
  const auto changed = withIds(page, plan.changes.front());
  expect(!changed || changedIds(page, *changed) == plan.changes.front(), "what changes are the ids of the plan");
}

void run(std::string_view input) {
  // The table comes first; a line of %% ends it.
  constexpr std::string_view separator = "\n%%\n";
  const std::size_t end = std::min(input.find(separator), input.size());
  const Corrections table = readCorrections(input.substr(0, end));
  checkTable(table);
  checkPage(input.substr(std::min(end + separator.size(), input.size())), table);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
