#include "repair/listed_order.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "diagnostics/instrument_names.h"

namespace kiv {
namespace {

constexpr double outOfOrder = -8;
constexpr double sameName = 4;
constexpr double otherName = -3;

constexpr double inOtherOrder = 0.05;  // of the groups have instruments in another order than the list

/// Slots next to each other of which nobody is certain, and the instruments that are listed for them.
struct Gap {
  int slots = 0;
  int slotsAbove = 0;  // above the one in question
  int listed = 0;
  int listedAbove = 0;  // before the one in question
};

/// In how many ways some of all can be chosen, as a logarithm.
double logChoices(int all, int chosen) {
  double sum = 0;
  for (int i = 1; i <= chosen; ++i) {
    sum += std::log(static_cast<double>(all - chosen + i) / i);
  }
  return sum;
}

/// How likely the instrument is the one in the slot, when any of those that are listed may be silent, and the others
/// stand in their order.
double shareOf(const Gap& gap) {
  const double any = 1.0 / gap.listed;
  if (gap.slots > gap.listed) {
    return any;
  }
  const int listedBelow = gap.listed - 1 - gap.listedAbove;
  const int slotsBelow = gap.slots - 1 - gap.slotsAbove;
  const bool fits = gap.listedAbove >= gap.slotsAbove && listedBelow >= slotsBelow;
  const double inOrder = fits ? std::exp(logChoices(gap.listedAbove, gap.slotsAbove) +
                                         logChoices(listedBelow, slotsBelow) - logChoices(gap.listed, gap.slots))
                              : 0;
  return (1 - inOtherOrder) * inOrder + inOtherOrder * any;
}

bool isNameOf(const std::string& text, const ListedInstrument& instrument) {
  return text == instrument.name || text == instrument.abbreviation || isShortFormOf(text, instrument.name);
}

}  // namespace

ListedOrder::ListedOrder(const std::vector<ListedInstrument>& listed, const CodedGroup& group,
                         const std::vector<LayoutSlot>& slots, const std::vector<std::int16_t>& certain)
    : listed_(listed), group_(group), slots_(slots) {
  for (std::size_t i = 0; i < listed.size(); ++i) {
    index_.emplace(listed[i].id, i);
  }
  for (const std::int16_t id : certain) {
    const auto known = index_.find(id);
    certain_.push_back(known == index_.end() ? -1 : static_cast<long>(known->second));
  }
}

/// Where the slot stands between the certain instruments above and below, and what is listed between them.
double ListedOrder::orderFit(std::size_t slot, std::size_t index) const {
  const auto wanted = static_cast<long>(index);
  long above = -1;
  auto below = static_cast<long>(listed_.size());
  Gap gap;
  for (std::size_t s = 0; s < certain_.size(); ++s) {
    const bool isCertain = certain_[s] >= 0 && s != slot;
    if (isCertain && s > slot) {
      below = certain_[s];
      break;
    }
    if (isCertain) {
      above = certain_[s];
      gap = {};
    } else {
      gap.slotsAbove += s < slot ? 1 : 0;
      ++gap.slots;
    }
  }
  if (above >= wanted || wanted >= below) {
    return outOfOrder;
  }
  gap.listed = static_cast<int>(below - above - 1);
  gap.listedAbove = static_cast<int>(wanted - above - 1);
  return std::log(shareOf(gap));
}

double ListedOrder::nameFit(const LayoutSlot& slot, const ListedInstrument& instrument) const {
  double same = 0;
  double all = 0;
  for (const auto& [name, count] : slot.names()) {
    all += count;
    same += isNameOf(group_.names[static_cast<std::size_t>(name)], instrument) ? count : 0;
  }
  const bool says = all > 0 && !(instrument.name.empty() && instrument.abbreviation.empty());
  return !says ? 0 : 2 * same > all ? sameName : otherName;
}

double ListedOrder::fit(std::size_t slot, std::int16_t id) const {
  const std::size_t index = index_.at(id);
  return std::min(0.0, orderFit(slot, index) + nameFit(slots_[slot], listed_[index]));
}

}  // namespace kiv
