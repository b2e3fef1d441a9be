#include "verify/first_clefs.h"

#include <algorithm>
#include <cmath>

#include "verify/numbers.h"

namespace kiv::proof {
namespace {

constexpr float kindMark = 1000;
constexpr float hiddenStaff = -1;

/// Reads the files of one page, and enters the clefs of instruments that have none yet.
class PageClefs {
 public:
  explicit PageClefs(FirstClefs& firstClefs) : firstClefs_(firstClefs) {}

  /// Adds the next file of the page. False when an analysis ends here.
  bool addFile(const StavesAndClefs& file);

 private:
  struct Staff {
    float number = 0;  ///< raised by the staves of the files before
    std::int16_t wholeNumber = 0;
    float instrument = 0;
  };

  bool addStaff(const StavesAndClefs::Entry& staff);
  bool addClef(const StavesAndClefs::Entry& clef);
  void raiseOffset();

  FirstClefs& firstClefs_;
  std::vector<Staff> staves_;
  std::int16_t offset_ = 0;
};

bool PageClefs::addFile(const StavesAndClefs& file) {
  raiseOffset();
  for (const StavesAndClefs::Entry& entry : file.entries) {
    if (!(entry.isStaff ? addStaff(entry) : addClef(entry))) {
      return false;
    }
  }
  return file.isComplete;
}

/// An analysis ends at a staff whose raised number 16 bits do not hold.
bool PageClefs::addStaff(const StavesAndClefs::Entry& staff) {
  const float number = staff.staff + static_cast<float>(offset_);
  const auto wholeNumber = roundedTo16Bits(number);
  if (wholeNumber) {
    staves_.push_back({number, *wholeNumber, std::fabs(staff.instrument)});
  }
  return wholeNumber.has_value();
}

/// Enters the clef unless its instrument has one. The clef's staff number, which is not raised, is looked for among the
/// raised ones.
bool PageClefs::addClef(const StavesAndClefs::Entry& clef) {
  const auto staff =
      std::find_if(staves_.begin(), staves_.end(), [&](const Staff& one) { return one.number == clef.staff; });
  if (staff == staves_.end()) {
    return true;
  }
  const auto instrument = roundedTo16Bits(staff->instrument);
  if (instrument) {
    firstClefs_.emplace(*instrument, FirstClef{clef.kind + kindMark, clef.height});
  }
  return instrument.has_value();
}

/// The staves of the next file are numbered from the highest staff so far.
void PageClefs::raiseOffset() {
  for (const Staff& staff : staves_) {
    offset_ = std::max(offset_, staff.wholeNumber);
  }
}

}  // namespace

float FirstClef::kind() const {
  return markedKind - kindMark;
}

StavesAndClefs stavesAndClefsOf(const LoadedPage& page) {
  StavesAndClefs found;
  for (const PageItem& read : page.items) {
    const Item& item = read.item;
    const bool isStaff = item.type() == ItemType::staff;
    if (item.type() == ItemType::clef || (isStaff && item[par::lines] != hiddenStaff)) {
      found.entries.push_back({isStaff, item[par::staff], item[par::instrument], item[par::kind], item[par::height]});
    }
  }
  found.isComplete = page.error.empty();
  return found;
}

GroupClefs firstClefsOf(const std::vector<PageFiles>& pages, const std::map<std::string, StavesAndClefs>& files) {
  GroupClefs group;
  for (const PageFiles& page : pages) {
    PageClefs clefs(group.clefs);
    for (std::size_t left = page.files.size(); left > 0; --left) {
      const std::string& file = page.files[left - 1];
      if (!clefs.addFile(files.at(file))) {
        group.endedBy = file;
        return group;
      }
    }
  }
  return group;
}

}  // namespace kiv::proof
