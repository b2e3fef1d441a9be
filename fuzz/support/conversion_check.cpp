#include "fuzz/support/conversion_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "base/number.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/expected_system.h"
#include "fuzz/support/report_view.h"
#include "fuzz/support/system_check.h"
#include "mus/page_walker.h"
#include "mus/reader.h"
#include "mus/writer.h"

namespace kiv::fuzz {
namespace {

constexpr float hidden = -1;

/// A result that is read and written again is the same.
void checkWrittenAgain(OverlayFiles& files, const std::string& name) {
  static ItemTable table;
  readFile(files, name, table);
  std::string bytes;
  encodePage(name, table, bytes);
  expect(bytes == *files.find(name), "a result that is read and written again is the same");
}

/// Whether the result can be read: a counted text of no characters makes it unreadable.
bool canBeRead(const std::vector<Record>& records, GroupInputs& inputs) {
  return std::all_of(records.begin(), records.end(),
                     [&](const Record& record) { return inputs.isReadableAgain(record.file, record.staff); });
}

}  // namespace

std::string resultName(const Group& group, int system) {
  const std::string number = std::to_string(system);
  return (group.besideInput ? "C:\\M\\WORK" : "C:\\OUT\\WORK") + std::string(4 - number.size(), '0') + number + ".MUS";
}

void checkAnalysis(OverlayFiles& files, const Group& group) {
  const std::vector<Record> records = recordsOf(*files.find(reportFile));
  std::size_t staves = 0;
  for (const Group::File& file : group.files) {
    PageWalker page(file.bytes);
    ReadStatus status = page.findItem();
    for (; status == ReadStatus::itemRead; status = page.findItem()) {
      staves += page.type() == ItemType::staff && page.par(par::lines) != hidden ? 1U : 0U;
    }
    expect(status == ReadStatus::endOfItems, "a successful analysis has read only whole pages");
  }
  expect(records.size() == staves, "the report has a record for every staff that is not hidden");
  std::map<std::int16_t, std::string> layouts;
  for (const Record& record : records) {
    // A staff below the lowest system keeps what its file says, so that its system need not be whole in the report.
    layouts[toInt16(record.system).value()] += std::to_string(record.instrId) + ",";
  }
  const bool consistent = std::all_of(layouts.begin(), layouts.end(),
                                      [&](const auto& layout) { return layout.second == layouts.begin()->second; });
  expect(files.find(verdictFile)->starts_with(consistent ? "CONSISTENCY=YES\r\n" : "CONSISTENCY=NO\r\n"),
         "the verdict is that of the report");
}

int checkConversion(OverlayFiles& files, const Group& group) {
  for (const Group::File& file : group.files) {
    const std::string* content = files.find(file.name);
    expect(content != nullptr && *content == file.bytes, "inputs are not touched");
  }
  const std::vector<Record> records = recordsOf(*files.find(reportFile));
  const auto systems = systemsOf(records);
  std::set<std::int16_t> instruments;
  for (const Record& record : records) {
    instruments.insert(record.instrId);
  }
  GroupInputs inputs(group);
  const int count = static_cast<int>(systems.size());
  for (int number = 1; number <= count; ++number) {
    const std::vector<Record>& system = systems[static_cast<std::size_t>(number - 1)];
    const std::string* result = files.find(resultName(group, number));
    expect(result != nullptr, "there is a result for every system");
    if (!canBeRead(system, inputs)) {
      continue;
    }
    const auto items = itemsOf(*result);
    expect(items.has_value(), "a result can be read");
    checkWrittenAgain(files, resultName(group, number));
    const ExpectedSystem expected = expectedSystem(system, instruments, inputs);
    if (!expected.empty()) {
      checkSystem(expected, *items, !group.hideNumbers);
    }
  }
  expect(files.find(resultName(group, count + 1)) == nullptr, "there is no result without a system");
  return count;
}

bool qualify(OverlayFiles& files, const Group& group, int results) {
  std::vector<float> first;
  for (int number = 1; number <= results; ++number) {
    const auto items = itemsOf(*files.find(resultName(group, number)));
    if (!items) {
      return false;
    }
    std::map<float, float> staves;  // number and instrument
    float widest = 1;
    for (const Item& item : *items) {
      const bool isNew =
          item.type() != ItemType::staff || staves.emplace(item[par::staff], item[par::instrument]).second;
      if (!isNew || (item.type() == ItemType::staff && item[par::lines] == hidden)) {
        return false;
      }
      if (item.type() == ItemType::barline && item[par::staff] == 1) {
        widest = std::max(widest, item[par::spannedStaves]);
      }
    }
    std::vector<float> layout;
    for (const auto& [staff, instrument] : staves) {
      layout.push_back(instrument);
      if (staff != static_cast<float>(layout.size())) {
        return false;
      }
    }
    first = number == 1 ? layout : first;
    if (layout != first || widest != static_cast<float>(layout.size())) {
      return false;
    }
  }
  return results > 0;
}

}  // namespace kiv::fuzz
