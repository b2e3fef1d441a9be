#include "analysis/read_bar_data.h"

#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "analysis/analyzed_items.h"
#include "analysis/page_outline.h"
#include "base/downcast.h"
#include "base/number.h"
#include "input/files.h"
#include "messages/input_messages.h"
#include "messages/page_messages.h"
#include "mus/reader.h"

namespace kiv {
namespace {

/// Adds the items of one open page file to the tables.
class PageItems {
 public:
  PageItems(User& user, MusReader& reader, std::int16_t staffOffset, ItemTable& table, FirstClefTable& firstClefs)
      : user_(user),
        reader_(reader),
        staffOffset_(staffOffset),
        table_(table),
        firstClefs_(firstClefs),
        staves_(table) {}

  /// Reads to the end. False when a structural error comes first. The observer may be null.
  bool addAll(FileObserver* observer);
  /// The same, by the places of an outline.
  bool addAll(const std::vector<ItemPlace>& places);

 private:
  void add();
  void addStaff();
  Item& store();

  User& user_;
  MusReader& reader_;
  float staffOffset_;
  ItemTable& table_;
  FirstClefTable& firstClefs_;
  StaffFinder staves_;
  Item clef_;
};

bool PageItems::addAll(FileObserver* observer) {
  ReadStatus readStatus = reader_.readItem();
  while (readStatus == ReadStatus::itemRead) {
    add();
    observeItem(observer, reader_.page());
    readStatus = reader_.readItem();
  }
  return readStatus == ReadStatus::endOfItems;
}

bool PageItems::addAll(const std::vector<ItemPlace>& places) {
  ReadStatus readStatus = ReadStatus::itemRead;
  for (const ItemPlace& place : places) {
    reader_.page().goTo(place);
    readStatus = reader_.readItem();
    if (readStatus == ReadStatus::itemRead) {
      add();
    }
  }
  return readStatus == ReadStatus::endOfItems;
}

void PageItems::add() {
  const PageWalker& page = reader_.page();
  const ItemType type = page.type();
  if (type == ItemType::clef) {
    page.decode(clef_);
    updateFirstClefTable(clef_, table_, staves_, reader_, firstClefs_);
  } else if (type == ItemType::staff) {
    addStaff();
  } else if (type == ItemType::barline) {
    store()[par::mark] = mark::none;
  } else if (type == ItemType::rest && isCueMarker(page)) {
    store();
  }
}

void PageItems::addStaff() {
  if (reader_.page().par(par::lines) == hiddenStaff) {
    user_.processEvents();
    return;
  }
  Item& staff = store();
  staff[par::instrument] = std::fabs(staff[par::instrument]);
  staff.text = "STAFF=";
  appendGeneralNumber(staff.text, reader_.page().par(par::staff));
  staff.text.append(",FILE=").append(table_.file());
  staff[par::stavesUp] = 0;
  staff[par::mark] = mark::none;
  wholePar(table_, table_.itemCount(), par::staff);
  staves_.add(staff[par::staff], table_.itemCount());
}

Item& PageItems::store() {
  Item& item = table_.newItem(reader_.page().itemsInFile());
  reader_.page().decode(item);
  item[par::staff] += staffOffset_;
  return item;
}

}  // namespace

void BarDataReader::readBarData(const std::string& musFileName, std::int16_t staffOffset, ItemTable& table,
                                FirstClefTable& firstClefs) {
  auto file = openExisting(files_, machine_, musFileName);
  if (!file) {
    endProgram(messages::namingProblem(musFileName, files_.currentFolder()));
  }
  const std::unique_ptr<PageOutline> outline = downcast<PageOutline>(file->releaseOutline());
  table.beginFile(musFileName);
  reader_.openMUSfile(musFileName, std::move(file));
  FileObserver* observer = nullptr;
  if (observer_ != nullptr) {
    observer =
        observer_->beginFile(musFileName, reader_.page().bytes(), outline ? std::move(outline->observer) : nullptr);
  }
  PageItems items(user_, reader_, staffOffset, table, firstClefs);
  const bool isWhole = outline && observer == nullptr ? items.addAll(outline->places) : items.addAll(observer);
  if (!isWhole) {
    endProgram(messages::structuralError(musFileName, reader_.page().itemsInFile(), files_.currentFolder()));
  }
  if (observer_ != nullptr) {
    observer_->endFile();
  }
}

}  // namespace kiv
