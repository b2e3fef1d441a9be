#include "repair/staff_signs.h"

#include <cmath>

#include "analysis/cue_marker.h"
#include "base/number.h"
#include "mus/format.h"
#include "mus/page_walker.h"

namespace kiv {
namespace {

/// What says nothing about an instrument.
constexpr TypeSet ignoredTypes{ItemType::clef,         ItemType(4), ItemType(5),  ItemType(6),  ItemType(7),
                               ItemType::staff,        ItemType(9), ItemType(12), ItemType(13), ItemType::keySignature,
                               ItemType::timeSignature};

/// Heights further away than this are no notes of music.
constexpr float highestNote = 100;
/// Notes that are looked at; more of them change no average.
constexpr int enoughNotes = 64;

class SignFinder {
 public:
  std::map<float, StaffSigns> find(std::string_view file);

 private:
  struct Notes {
    int count = 0;
    float sum = 0;
  };

  void addItem(const PageWalker& page);
  void addNote(const PageWalker& page);

  std::map<float, StaffSigns> signs_;
  std::map<float, Notes> notes_;
  float lastStaff_ = 0;
  Notes* lastNotes_ = nullptr;  // of the staff with that number: most notes follow one of their own staff
};

void SignFinder::addNote(const PageWalker& page) {
  const float staff = page.par(par::staff);
  const float height = page.par(par::height);
  if (!(std::fabs(height) <= highestNote)) {
    return;
  }
  if (lastNotes_ == nullptr || staff != lastStaff_) {
    lastNotes_ = &notes_[staff];
    lastStaff_ = staff;
  }
  if (lastNotes_->count < enoughNotes) {
    ++lastNotes_->count;
    lastNotes_->sum += height;
  }
}

void SignFinder::addItem(const PageWalker& page) {
  const ItemType type = page.type();
  const float staff = page.par(par::staff);
  if (std::isnan(staff)) {
    return;  // a number that is none has no order in a map
  }
  if (type == ItemType::note) {
    addNote(page);
  } else if (type == ItemType::barline) {
    if (page.par(par::kind) >= lowestBraceKind) {
      signs_[staff].brace = page.par(par::braceKind);
    }
  } else if (type == ItemType::instrumentNumber) {
    signs_[staff].shownNumber = page.par(par::shownNumber);
  } else if (type == ItemType::rest && isCueMarker(page)) {
    if (const auto instrument = toInt16(page.par(par::cuedInstrument))) {
      signs_[staff].cues.push_back({page.itemsInFile(), *instrument});
    }
  }
}

std::map<float, StaffSigns> SignFinder::find(std::string_view file) {
  PageWalker page(file);
  while (page.findItem() == ReadStatus::itemRead) {
    addItem(page);
    page.skipItems(ignoredTypes);
  }
  for (const auto& [staff, notes] : notes_) {
    signs_[staff].noteHeight = notes.sum / static_cast<float>(notes.count);
  }
  return std::move(signs_);
}

}  // namespace

std::map<float, StaffSigns> findSigns(std::string_view file) {
  return SignFinder().find(file);
}

}  // namespace kiv
