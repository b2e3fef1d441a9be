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
  bool addFile(const LoadedPage& file);

 private:
  struct Staff {
    float number = 0;  ///< raised by the staves of the files before
    std::int16_t wholeNumber = 0;
    float instrument = 0;
  };

  bool addStaff(const Item& staff);
  bool addClef(const Item& clef);
  void raiseOffset();

  FirstClefs& firstClefs_;
  std::vector<Staff> staves_;
  std::int16_t offset_ = 0;
};

bool PageClefs::addFile(const LoadedPage& file) {
  raiseOffset();
  for (const PageItem& read : file.items) {
    const Item& item = read.item;
    const bool isStaff = item.type() == ItemType::staff && item[par::lines] != hiddenStaff;
    if ((isStaff && !addStaff(item)) || (item.type() == ItemType::clef && !addClef(item))) {
      return false;
    }
  }
  return file.error.empty();
}

/// An analysis ends at a staff whose raised number 16 bits do not hold.
bool PageClefs::addStaff(const Item& staff) {
  const float number = staff[par::staff] + static_cast<float>(offset_);
  const auto wholeNumber = roundedTo16Bits(number);
  if (wholeNumber) {
    staves_.push_back({number, *wholeNumber, std::fabs(staff[par::instrument])});
  }
  return wholeNumber.has_value();
}

/// Enters the clef unless its instrument has one. The clef's staff number, which is not raised, is looked for among the
/// raised ones.
bool PageClefs::addClef(const Item& clef) {
  const auto staff =
      std::find_if(staves_.begin(), staves_.end(), [&](const Staff& one) { return one.number == clef[par::staff]; });
  if (staff == staves_.end()) {
    return true;
  }
  const auto instrument = roundedTo16Bits(staff->instrument);
  if (instrument) {
    firstClefs_.emplace(*instrument, FirstClef{clef[par::kind] + kindMark, clef[par::height]});
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

void FirstClefsOfGroup::addPage(const PageFiles& page, const LoadedPages& files) {
  PageClefs clefs(clefs_);
  for (std::size_t left = page.files.size(); left > 0 && endedBy_.empty(); --left) {
    const std::string& file = page.files[left - 1];
    if (!clefs.addFile(files.at(file))) {
      endedBy_ = file;
    }
  }
}

}  // namespace kiv::proof
