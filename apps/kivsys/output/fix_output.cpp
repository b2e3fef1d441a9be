#include "apps/kivsys/output/fix_output.h"

#include <cmath>

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/outcome_json.h"
#include "base/counted.h"
#include "base/number.h"
#include "platform/console/native_system.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

using repair::IdChange;

const char* kindWordOf(const IdChange& change) {
  if (change.at.type == ItemType::staff) {
    return "staff";
  }
  return change.at.type == ItemType::rest ? "cue" : "number";
}

/// Where the id stands: "staff 3", "cue in staff 3".
std::string placeOf(const IdChange& change) {
  std::string staff = "staff " + generalNumber(change.at.staff);
  if (change.at.type == ItemType::staff) {
    return staff;
  }
  return std::string(change.at.type == ItemType::rest ? "cue" : "number shown") + " in " + staff;
}

std::string linesOf(const FixedPage& page, bool dryRun, const FileNamer& nameOf) {
  const std::string changed = page.changes.empty()
                                  ? "unchanged"
                                  : counted(page.changes.size(), "id") + (dryRun ? " would be changed" : " changed");
  const std::string written = page.written.empty() ? "" : ", written to " + nameOf(page.written);
  std::string lines = printable(nameOf(page.file) + ": " + changed + written) + "\n";
  for (const IdChange& change : page.changes) {
    lines += "  item " + std::to_string(change.at.item) + ": " + placeOf(change) + ": " + generalNumber(change.at.id) +
             " -> " + std::to_string(change.newId) + "\n";
  }
  return lines;
}

/// A whole number as such, and one that is none as JSON can have it.
Json idJson(float number) {
  if (const auto whole = toInt32(number); whole && static_cast<float>(*whole) == number) {
    return *whole;
  }
  return std::isfinite(number) ? Json(number) : Json();
}

/// "id 2 stands twice in 10 systems now, first in x1.mus: system 1"
std::string wordsOf(const DoubledId& doubled, bool dryRun, const FileNamer& nameOf) {
  return "id " + std::to_string(doubled.id) + (dryRun ? " would stand twice in " : " stands twice in ") +
         counted(doubled.systems, "system") + (dryRun ? "" : " now") + ", first in " + nameOf(doubled.firstFile) +
         ": system " + std::to_string(doubled.firstSystem);
}

Json jsonOf(const FixedPage& page) {
  Json changes = Json::array();
  for (const IdChange& change : page.changes) {
    changes.push_back({{"item", change.at.item},
                       {"what", kindWordOf(change)},
                       {"staff", idJson(change.at.staff)},
                       {"old_id", idJson(change.at.id)},
                       {"new_id", change.newId}});
  }
  return {{"file", NativeSystem::toUtf8(page.file)},
          {"written", page.written.empty() ? Json() : Json(NativeSystem::toUtf8(page.written))},
          {"changes", changes}};
}

}  // namespace

std::string asText(const FixReport& report, const FileNamer& nameOf) {
  std::string text;
  std::size_t changes = 0;
  for (const FixedPage& page : report.pages) {
    text += linesOf(page, report.dryRun, nameOf);
    changes += page.changes.size();
  }
  text +=
      counted(changes, "id") + (report.dryRun ? " would be changed" : " changed") + " in " +
      counted(report.pages.size(), "page") +
      (report.pages.size() < report.all ? "; " + counted(report.all - report.pages.size(), "page") + " not written\n"
                                        : "\n");
  if (report.undecided > 0) {
    text += counted(report.undecided, "row") + " without a new id left out\n";
  }
  if (report.leftOut > 0) {
    text += counted(report.leftOut, "row") + " of less confidence left out\n";
  }
  if (report.dryRun && !report.refusals.empty()) {
    text += "without --dry-run nothing would be written:\n";
    for (const std::string& reason : report.refusals) {
      text += "  " + printable(reason) + "\n";
    }
  }
  return text;
}

std::string warningLines(const FixReport& report, const FileNamer& nameOf) {
  std::string lines;
  for (const DoubledId& doubled : report.doubled) {
    lines += "kivsys: warning: " + printable(wordsOf(doubled, report.dryRun, nameOf)) + "\n";
  }
  return lines;
}

std::string asJson(const FixReport& report, const FileNamer& nameOf) {
  Json warnings = Json::array();
  for (const DoubledId& doubled : report.doubled) {
    warnings.push_back({{"id", doubled.id},
                        {"systems", doubled.systems},
                        {"file", NativeSystem::toUtf8(nameOf(doubled.firstFile))},
                        {"system", doubled.firstSystem},
                        {"text", NativeSystem::toUtf8(wordsOf(doubled, report.dryRun, nameOf))}});
  }
  Json pages = Json::array();
  for (const FixedPage& page : report.pages) {
    pages.push_back(jsonOf(page));
  }
  return asLine({{"end", report.normalEnd ? "normal" : "critical"},
                 {"dry_run", report.dryRun},
                 {"pages", pages},
                 {"undecided", report.undecided},
                 {"left_out", report.leftOut},
                 {"refusals", textsJson(report.refusals)},
                 {"next", report.next ? Json(NativeSystem::toUtf8(*report.next)) : Json()},
                 {"warnings", warnings},
                 {"schema_version", schemaVersion}});
}

}  // namespace kiv
