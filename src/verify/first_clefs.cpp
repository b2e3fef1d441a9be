#include "verify/first_clefs.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "input/file_names.h"
#include "verify/numbers.h"

namespace kiv::proof {
namespace {

constexpr float kindMark = 1000;
constexpr float hiddenStaff = -1;

/// Where in a file name without folder its page letter is: a single letter between number and suffix.
std::size_t pageLetterOf(const std::string& name) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
  const std::size_t end = std::min(name.find('.'), name.size());
  return end >= 2 && isLetter(name[end - 1]) && isDigit(name[end - 2]) ? end - 1 : std::string::npos;
}

/// The files of each page in the order of selection. Pages come in the order of their first files.
std::vector<std::vector<std::string>> pagesOf(Machine& machine, const std::vector<std::string>& inputs) {
  std::vector<std::vector<std::string>> pages;
  std::unordered_map<std::string, std::size_t> pagesWithLetters;
  for (const std::string& input : inputs) {
    std::string name = withoutPath(machine, input);
    const std::size_t letter = pageLetterOf(name);
    if (letter == std::string::npos) {
      pages.push_back({input});
      continue;
    }
    const auto [page, isNew] = pagesWithLetters.emplace(name.erase(letter, 1), pages.size());
    if (isNew) {
      pages.emplace_back();
    }
    pages[page->second].push_back(input);
  }
  return pages;
}

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

  bool addStaff(const Item& staff);
  bool addClef(const Item& clef);
  void raiseOffset();

  FirstClefs& firstClefs_;
  std::vector<Staff> staves_;
  std::int16_t offset_ = 0;
};

bool PageClefs::addFile(const StavesAndClefs& file) {
  raiseOffset();
  for (const Item& item : file.items) {
    if (!(item.type() == ItemType::staff ? addStaff(item) : addClef(item))) {
      return false;
    }
  }
  return file.isComplete;
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

StavesAndClefs stavesAndClefsOf(const LoadedPage& page) {
  StavesAndClefs found;
  for (const PageItem& read : page.items) {
    const ItemType type = read.item.type();
    if (type == ItemType::clef || (type == ItemType::staff && read.item[par::lines] != hiddenStaff)) {
      found.items.push_back(read.item);
    }
  }
  found.isComplete = page.error.empty();
  return found;
}

FirstClefs firstClefsOf(Machine& machine, const std::vector<std::string>& inputs,
                        const std::map<std::string, StavesAndClefs>& files) {
  FirstClefs firstClefs;
  for (const std::vector<std::string>& page : pagesOf(machine, inputs)) {
    PageClefs clefs(firstClefs);
    const bool isComplete =
        std::all_of(page.rbegin(), page.rend(), [&](const std::string& file) { return clefs.addFile(files.at(file)); });
    if (!isComplete) {
      return firstClefs;
    }
  }
  return firstClefs;
}

}  // namespace kiv::proof
