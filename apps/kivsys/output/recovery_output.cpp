#include "apps/kivsys/output/recovery_output.h"

#include <algorithm>
#include <cmath>
#include <map>

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/outcome_json.h"
#include "base/counted.h"
#include "base/exact_number.h"
#include "pagetext/item_words.h"
#include "platform/console/native_system.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

using repair::Loss;
using repair::Recovery;
using repair::SavedItem;

std::string typeOf(const SavedItem& item) {
  const ItemWord* word = itemWordOf(item.type);
  return word != nullptr ? std::string(word->word) : "type " + exactNumber(item.type.number());
}

/// "item 41 (note, staff 3)"
std::string nameOf(const Recovery& recovery, std::size_t index) {
  const SavedItem& item = recovery.items[index];
  return "item " + std::to_string(index + 1) + " (" + typeOf(item) + ", staff " + exactNumber(item.staff) + ")";
}

/// Where a loss lies among the items that were kept.
std::string placeOf(const Recovery& recovery, const Loss& loss) {
  const std::size_t after = loss.itemsBefore;
  const bool isLast = after == recovery.items.size();
  if (after == 0) {
    return isLast ? "" : ", before " + nameOf(recovery, 0);
  }
  return isLast ? ", after " + nameOf(recovery, after - 1)
                : ", between " + nameOf(recovery, after - 1) + " and " + nameOf(recovery, after);
}

/// How much of the page is missing, by the words that its header states.
std::string missingLine(const Recovery& recovery) {
  const int stated = recovery.statedWords.value_or(0);
  if (stated <= recovery.words) {
    return "";
  }
  constexpr double all = 100;
  const int missing = stated - recovery.words;
  const long share = std::max(1L, std::lround(all * missing / stated));
  return "missing: " + std::to_string(missing) + " of " + std::to_string(stated) + " words, about " +
         std::to_string(share) + " % of the page\n";
}

std::string headerLine(const Recovery& recovery) {
  if (recovery.statedWords == recovery.words) {
    return "";
  }
  const std::string stated = recovery.statedWords ? std::to_string(*recovery.statedWords) : "no";
  return "header: " + stated + " words stated, " + std::to_string(recovery.words) + " recovered\n" +
         missingLine(recovery);
}

/// The staves of which no item is left.
std::string emptyStavesLine(const Recovery& recovery) {
  std::map<float, bool> hasItems;
  for (const SavedItem& item : recovery.items) {
    if (std::isfinite(item.staff)) {
      hasItems[item.staff] = hasItems[item.staff] || (item.type != ItemType::staff && item.type != ItemType::barline);
    }
  }
  std::string staves;
  for (const auto& [staff, has] : hasItems) {
    staves += has ? "" : (staves.empty() ? "" : ", ") + exactNumber(staff);
  }
  return staves.empty() ? "" : "nothing is left on these staves: " + staves + "\n";
}

Json itemJson(const Recovery& recovery, std::size_t index) {
  const SavedItem& item = recovery.items[index];
  return {{"item", index + 1},
          {"type", numberJson(item.type.number())},
          {"staff", std::isfinite(item.staff) ? numberJson(item.staff) : Json()}};
}

Json lossJson(const Recovery& recovery, const Loss& loss) {
  const std::size_t after = loss.itemsBefore;
  return {{"offset", loss.bytes.begin},
          {"bytes", loss.bytes.size()},
          {"after", after == 0 ? Json() : itemJson(recovery, after - 1)},
          {"before", after == recovery.items.size() ? Json() : itemJson(recovery, after)}};
}

}  // namespace

std::string asText(const Recovery& recovery, const RecoveryReport& report) {
  const std::string page = printable(report.page);
  if (recovery.isWhole) {
    return page + " is undamaged: " + counted(recovery.items.size(), "item") + "; nothing to recover\n";
  }
  if (recovery.items.empty()) {
    return report.mistaken.empty() ? page + " holds no item that can be recovered\n"
                                   : page + ": " + report.mistaken + "\n";
  }
  std::string text = page + ": kept " + counted(recovery.items.size(), "item") + "\n" + headerLine(recovery);
  for (const Loss& loss : recovery.losses) {
    text += "lost " + counted(loss.bytes.size(), "byte") + " at offset " + std::to_string(loss.bytes.begin) +
            placeOf(recovery, loss) + "\n";
  }
  text += recovery.words < recovery.statedWords.value_or(0) ? emptyStavesLine(recovery) : "";
  text += recovery.trailer ? "" : "the trailer is lost; a standard one, of a page in inches, is used instead\n";
  if (report.dryRun && !report.refusals.empty()) {
    text += "nothing written, as this is a dry run; without --dry-run it would not be written either:\n";
    for (const std::string& reason : report.refusals) {
      text += "  " + printable(reason) + "\n";
    }
    return text;
  }
  if (report.dryRun) {
    return text + "nothing written, as this is a dry run; would write " + printable(report.shown) + "\n";
  }
  return text + "written: " + printable(report.shown) + "\n";
}

std::string asJson(const Recovery& recovery, const RecoveryReport& report) {
  Json losses = Json::array();
  for (const Loss& loss : recovery.losses) {
    losses.push_back(lossJson(recovery, loss));
  }
  const bool isPlanned = report.dryRun || report.written.empty();
  const Json object = {{"whole", recovery.isWhole},
                       {"items", recovery.items.size()},
                       {"losses", losses},
                       {"stated_words", recovery.statedWords ? Json(*recovery.statedWords) : Json()},
                       {"words", recovery.words},
                       {"trailer_found", recovery.trailer.has_value()},
                       {"written", isPlanned ? Json() : Json(NativeSystem::toUtf8(report.written))},
                       {"dry_run", report.dryRun},
                       {"refusals", textsJson(report.refusals)},
                       {"next", report.next ? Json(NativeSystem::toUtf8(*report.next)) : Json()},
                       {"schema_version", schemaVersion}};
  return asLine(object);
}

}  // namespace kiv
