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

/// Between the certain instruments above and below, any one that is listed there is as likely as the others.
double ListedOrder::orderFit(std::size_t slot, std::size_t index) const {
  const auto wanted = static_cast<long>(index);
  long above = -1;
  auto below = static_cast<long>(listed_.size());
  for (std::size_t s = 0; s < certain_.size(); ++s) {
    if (certain_[s] >= 0 && s < slot) {
      above = certain_[s];
    } else if (certain_[s] >= 0 && s > slot) {
      below = certain_[s];
      break;
    }
  }
  return above < wanted && wanted < below ? -std::log(static_cast<double>(below - above - 1)) : outOfOrder;
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
