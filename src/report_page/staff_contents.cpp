#include "report_page/staff_contents.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <utility>

#include "base/number.h"
#include "mus/item.h"

namespace kiv::report {
namespace {

/// FNV-1a, by words.
class Digest {
 public:
  void add(std::uint64_t word) {
    constexpr std::uint64_t prime = 0x100000001B3;
    constexpr int shift = 29;
    value_ = (value_ ^ word) * prime;
    value_ ^= value_ >> shift;
  }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325;
};

bool isRegenerated(ItemType type) {
  return type == ItemType::barline || type == ItemType::instrumentNumber;
}

/// The text without the blanks at its end, which a writer may add.
std::string_view unpadded(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Differs for items that a conversion never makes of one another. What it changes takes no part: the staff, the id of
/// a staff item and its P4, the length of a text.
std::uint64_t digestOf(const Item& item) {
  const ItemType type = item.type();
  Digest digest;
  digest.add(std::bit_cast<std::uint32_t>(item[par::type]));
  for (int p = par::position; p <= parameterCount; ++p) {
    const bool changes =
        (type == ItemType::staff && (p == par::instrument || p == par::writtenAsZero || p > par::cuedInstrument)) ||
        (type == ItemType::countedText && p == par::textLength);
    digest.add(changes || item[p] == 0 ? 0 : std::bit_cast<std::uint32_t>(item[p]));
  }
  for (const char c : unpadded(item.text)) {
    digest.add(static_cast<unsigned char>(c));
  }
  return digest.value();
}

}  // namespace

void StaffContent::add(const StaffContent& other) {
  hasNotes = hasNotes || other.hasNotes;
  isStaff = isStaff || other.isStaff;
  std::vector<std::uint64_t> all;
  all.reserve(items.size() + other.items.size());
  std::merge(items.begin(), items.end(), other.items.begin(), other.items.end(), std::back_inserter(all));
  items = std::move(all);
}

PageContent contentOf(std::string_view page) {
  PageContent content;
  PageWalker walker(page);
  Item item;
  ReadStatus status = walker.findItem();
  for (; status == ReadStatus::itemRead; status = walker.findItem()) {
    if (isRegenerated(walker.type()) || std::isnan(walker.par(par::staff))) {
      continue;
    }
    StaffContent& staff = content.staves[walker.par(par::staff)];
    walker.decode(item);
    if (item.type() == ItemType::staff) {
      staff.isStaff = true;
      staff.instrument = std::abs(int{toInt16(item[par::instrument]).value_or(0)});
    }
    staff.hasNotes = staff.hasNotes || item.type() == ItemType::note;
    staff.items.push_back(digestOf(item));
  }
  content.isDamaged = status != ReadStatus::endOfItems;
  for (auto& [number, staff] : content.staves) {
    std::sort(staff.items.begin(), staff.items.end());
  }
  return content;
}

std::size_t missingItems(const StaffContent& wanted, const StaffContent& found) {
  std::vector<std::uint64_t> missing;
  std::set_difference(wanted.items.begin(), wanted.items.end(), found.items.begin(), found.items.end(),
                      std::back_inserter(missing));
  return missing.size();
}

}  // namespace kiv::report
