// The rows of a page: what an analysis keeps of its files.

#include "verify/page_rows.h"

#include <cmath>

#include "verify/item_order.h"
#include "verify/numbers.h"

namespace kiv::proof {
namespace {

constexpr std::size_t mostRows = 5000;
constexpr float hiddenStaff = -1;

bool isVisibleStaff(const Item& item) {
  return item.type() == ItemType::staff && item[par::lines] != hiddenStaff;
}

/// Whether an item refers to another instrument.
bool isCue(const Item& item) {
  constexpr float lowest = -6;
  constexpr float highest = 2;
  const bool isCueKind = item[par::kind] == -2 || item[par::kind] == -12;
  return item.type() == ItemType::rest && isCueKind && item[par::restForm] != -1 && item[par::height] >= lowest &&
         item[par::height] <= highest && item[par::cuedInstrument] != 0;
}

/// Reads the files of one page.
class RowReader {
 public:
  void addFile(const std::string& file, const LoadedPage& page);
  PageRows sorted();

 private:
  void addRow(const std::string& file, const PageItem& read);
  void completeStaff(PageRow& row);

  PageRows page_;
  std::int16_t offset_ = 0;
  std::int16_t highest_ = 0;
};

void RowReader::addFile(const std::string& file, const LoadedPage& page) {
  offset_ = highest_;
  for (const PageItem& read : page.items) {
    const Item& item = read.item;
    if (isVisibleStaff(item) || item.type() == ItemType::barline || isCue(item)) {
      addRow(file, read);
    }
  }
  if (!page.error.empty()) {
    page_.fail(file, 0, page.error);
  }
}

void RowReader::addRow(const std::string& file, const PageItem& read) {
  PageRow row{read.item, "", file, read.number};
  row.item[par::staff] += static_cast<float>(offset_);
  if (row.item.type() == ItemType::staff) {
    row.record = "STAFF=" + generalForm(read.item[par::staff]) + ",FILE=" + file;
    completeStaff(row);
  } else if (row.item.type() == ItemType::barline) {
    row.item[par::mark] = 0;
  }
  if (page_.rows.size() == mostRows) {
    page_.fail(file, read.number, "is one item more than an analysis of a page can hold");
    return;
  }
  page_.rows.push_back(std::move(row));
}

void RowReader::completeStaff(PageRow& row) {
  Item& staff = row.item;
  staff[par::instrument] = std::fabs(staff[par::instrument]);
  staff[par::stavesUp] = 0;
  staff[par::mark] = 0;
  const auto number = roundedTo16Bits(staff[par::staff]);
  if (!number) {
    page_.fail(row.file, row.number, "has a staff number that 16 bits do not hold");
  } else if (staff[par::staff] > static_cast<float>(highest_)) {
    highest_ = *number;
  }
}

PageRows RowReader::sorted() {
  std::vector<OrderKey> keys;
  keys.reserve(page_.rows.size());
  for (const PageRow& row : page_.rows) {
    keys.push_back({row.item[par::staff], row.item[par::position], row.item[par::height]});
  }
  std::vector<PageRow> inOrder;
  for (const std::size_t i : orderOf(keys)) {
    inOrder.push_back(std::move(page_.rows[i]));
  }
  page_.rows = std::move(inOrder);
  return std::move(page_);
}

}  // namespace

void PageRows::fail(const std::string& file, int item, const std::string& what) {
  if (!failure) {
    failure = Finding{file, item, what};
  }
}

PageRows rowsOf(const PageFiles& page, const LoadedPages& files) {
  RowReader reader;
  for (std::size_t left = page.files.size(); left > 0; --left) {
    const std::string& file = page.files[left - 1];
    reader.addFile(file, files.at(file));
  }
  return reader.sorted();
}

}  // namespace kiv::proof
