#include "repair/page_ids.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "analysis/cue_marker.h"
#include "base/bytes.h"
#include "base/number.h"
#include "mus/item.h"
#include "mus/page_walker.h"

namespace kiv::repair {
namespace {

bool hasId(const PageWalker& page) {
  return page.type() == ItemType::staff || page.type() == ItemType::instrumentNumber ||
         (page.type() == ItemType::rest && isCueMarker(page));
}

std::size_t endOf(const PageWalker& page) {
  return page.itemOffset() + bytesPerWord * (static_cast<std::size_t>(page.itemLength()) + 1);
}

/// Goes to an item, which the page must have.
void findItem(PageWalker& page, std::int16_t item) {
  while (page.itemsInFile() < item) {
    static_cast<void>(page.findItem());
  }
}

/// The bytes of the item that was found last, with a new id.
std::string itemWithId(std::string_view page, const PageWalker& walker, std::int16_t id) {
  std::string item(page.substr(walker.itemOffset(), endOf(walker) - walker.itemOffset()));
  const int parameter = idParameter(walker.type());
  if (walker.itemLength() < parameter) {
    item.resize(bytesPerWord * (static_cast<std::size_t>(parameter) + 1));
    putWord(static_cast<float>(parameter), item.data());
  }
  putWord(static_cast<float>(id), item.data() + bytesPerWord * static_cast<std::size_t>(parameter));
  return item;
}

void putHeader(std::string& page, int words) {
  constexpr unsigned bitsPerByte = 8;
  const auto count = static_cast<std::uint16_t>(words);
  page[0] = static_cast<char>(count & std::numeric_limits<unsigned char>::max());
  page[1] = static_cast<char>(count >> bitsPerByte);
}

/// The difference between two items; nullopt when anything but an id differs. An equal item has none.
class ItemDifference {
 public:
  ItemDifference(std::string_view before, const PageWalker& old, std::string_view after, const PageWalker& now)
      : before_(before), old_(old), after_(after), now_(now) {}

  bool isNone() const { return bytes(before_, old_) == bytes(after_, now_); }

  std::optional<IdChange> find() const {
    const int parameter = hasId(old_) ? idParameter(old_.type()) : 0;
    const auto id = parameter == 0 ? std::nullopt : toInt16(now_.storedPar(parameter));
    if (!id || itemWithId(before_, old_, *id) != bytes(after_, now_)) {
      return std::nullopt;
    }
    return IdChange{{old_.itemsInFile(), old_.type(), old_.par(par::staff), old_.par(parameter)}, *id};
  }

 private:
  static std::string_view bytes(std::string_view page, const PageWalker& item) {
    return page.substr(item.itemOffset(), endOf(item) - item.itemOffset());
  }

  std::string_view before_;
  const PageWalker& old_;
  std::string_view after_;
  const PageWalker& now_;
};

}  // namespace

std::optional<std::int16_t> countedId(const PageId& id) {
  const float number = id.type == ItemType::staff ? std::fabs(id.id) : id.id;
  if (number == std::trunc(number)) {
    return toInt16(number);
  }
  const auto asReportHasIt = strictNumber(generalNumber(number));
  return asReportHasIt ? toInt16(*asReportHasIt) : std::nullopt;
}

int idParameter(ItemType type) {
  return type == ItemType::staff ? par::instrument
                                 : (type == ItemType::instrumentNumber ? par::shownNumber : par::cuedInstrument);
}

std::optional<std::vector<PageId>> idsOf(std::string_view page) {
  std::vector<PageId> ids;
  PageWalker walker(page);
  ReadStatus status = walker.findItem();
  for (; status == ReadStatus::itemRead; status = walker.findItem()) {
    if (hasId(walker)) {
      ids.push_back(
          {walker.itemsInFile(), walker.type(), walker.par(par::staff), walker.par(idParameter(walker.type()))});
    }
  }
  return status == ReadStatus::endOfItems ? std::optional(std::move(ids)) : std::nullopt;
}

std::optional<std::string> withIds(std::string_view page, const std::vector<IdChange>& changes) {
  PageWalker walker(page);
  std::string changed(page.substr(0, headerBytes));
  std::size_t copied = changed.size();
  for (const IdChange& change : changes) {
    findItem(walker, change.at.item);
    changed += page.substr(copied, walker.itemOffset() - copied);
    changed += itemWithId(page, walker, change.newId);
    copied = endOf(walker);
  }
  changed += page.substr(copied);
  const auto grownWords = static_cast<int>((changed.size() - page.size()) / bytesPerWord);
  const int words = PageWalker(page).fileWords() + grownWords;
  if (words > std::numeric_limits<std::int16_t>::max()) {
    return std::nullopt;
  }
  putHeader(changed, words);
  return changed;
}

std::optional<std::vector<IdChange>> changedIds(std::string_view before, std::string_view after) {
  PageWalker old(before);
  PageWalker now(after);
  std::vector<IdChange> changes;
  while (true) {
    const std::size_t end = old.position();
    const std::size_t endNow = now.position();
    const ReadStatus status = old.findItem();
    if (status != now.findItem()) {
      return std::nullopt;
    }
    if (status != ReadStatus::itemRead) {
      const bool isWhole = status == ReadStatus::endOfItems && before.substr(end) == after.substr(endNow);
      return isWhole ? std::optional(std::move(changes)) : std::nullopt;
    }
    const ItemDifference difference(before, old, after, now);
    if (difference.isNone()) {
      continue;
    }
    const auto change = difference.find();
    if (!change) {
      return std::nullopt;
    }
    changes.push_back(*change);
  }
}

}  // namespace kiv::repair
