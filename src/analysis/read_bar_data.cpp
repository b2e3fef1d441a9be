#include "analysis/read_bar_data.h"

#include <cmath>
#include <memory>
#include <utility>

#include "analysis/cue_marker.h"
#include "analysis/naming_problem.h"
#include "base/number.h"
#include "input/files.h"
#include "mus/reader.h"

namespace kiv {
namespace {

/// All types but the texts and those that takeItem looks at; nearly all items of a page are of them.
constexpr TypeSet notLookedAt{type::note,         4, 5, 6, 7, 9, type::instrumentNumber, 12, 13, type::keySignature,
                              type::timeSignature};

/// Takes from one page file what the analysis looks at.
class BarDataReader {
 public:
  BarDataReader(Host& host, const std::string& musFileName, std::int16_t staffOffset, ItemTable& table,
                FirstClefTable& firstClefs, MusReader& reader)
      : host_(host),
        musFileName_(musFileName),
        staffOffset_(staffOffset),
        table_(table),
        firstClefs_(firstClefs),
        staves_(table),
        reader_(reader) {}

  void read(std::unique_ptr<InputFile> file);

 private:
  void takeItem();
  void takeStaff();
  Item& store();

  Host& host_;
  const std::string& musFileName_;
  float staffOffset_;
  ItemTable& table_;
  FirstClefTable& firstClefs_;
  StaffFinder staves_;
  MusReader& reader_;
  Item item_;
};

void BarDataReader::read(std::unique_ptr<InputFile> file) {
  reader_.openMUSfile(musFileName_, std::move(file));
  ReadStatus readStatus = reader_.readItem(host_);
  while (readStatus == ReadStatus::itemRead) {
    takeItem();
    reader_.passOver(notLookedAt);
    readStatus = reader_.readItem(host_);
  }
  if (readStatus == ReadStatus::structuralError) {
    refusePage(host_, musFileName_, reader_.page().itemsInFile());
  }
}

void BarDataReader::takeItem() {
  const PageWalker& page = reader_.page();
  const float type = page.type();
  if (type == type::clef) {
    page.decode(item_);
    updateFirstClefTable(host_, item_, table_, staves_, reader_, firstClefs_);
  } else if (type == type::staff) {
    takeStaff();
  } else if (type == type::barline) {
    store().par[par::mark] = 0;
  } else if (type == type::rest && isCueMarker(page)) {
    store();
  }
}

void BarDataReader::takeStaff() {
  if (reader_.page().par(par::lines) == hiddenStaff) {
    host_.processEvents();
    return;
  }
  Item& staff = store();
  staff.par[par::instrument] = std::fabs(staff.par[par::instrument]);
  staff.text = "STAFF=";
  appendGeneralNumber(staff.text, reader_.page().par(par::staff));
  staff.text.append(",FILE=").append(musFileName_);
  staff.par[par::stavesUp] = 0;
  staff.par[par::mark] = 0;
  staves_.add(staff.par[par::staff], table_.itemCount());
}

Item& BarDataReader::store() {
  Item& item = table_.newItem(host_);
  reader_.page().decode(item);
  item.par[par::staff] += staffOffset_;
  return item;
}

}  // namespace

void readBarData(Host& host, const std::string& musFileName, std::int16_t staffOffset, ItemTable& table,
                 FirstClefTable& firstClefs, MusReader& reader) {
  auto file = openExisting(host, musFileName);
  if (!file) {
    refuseFileName(host, musFileName);
  }
  BarDataReader(host, musFileName, staffOffset, table, firstClefs, reader).read(std::move(file));
}

}  // namespace kiv
