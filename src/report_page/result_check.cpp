#include "report_page/result_check.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "base/counted.h"
#include "base/number.h"
#include "diagnostics/recent_pages.h"
#include "mus/format.h"
#include "report_page/staff_contents.h"
#include "verify/result_names.h"

namespace kiv::report {
namespace {

using Ids = std::set<int>;
using Contents = std::map<int, StaffContent>;  // by instrument

/// The ids of all staves; 0 stands for no instrument.
Ids idsOf(const GroupFacts& facts) {
  Ids ids;
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    for (const std::int16_t instrument : facts.instrumentsOf(s)) {
      ids.insert(std::abs(int{instrument}));
    }
  }
  ids.erase(0);
  return ids;
}

std::string listed(const std::vector<int>& ids) {
  std::string words;
  for (const int id : ids) {
    words += (words.empty() ? "" : ", ") + std::to_string(id);
  }
  return words;
}

/// Compares results with the systems, one after the other.
class ResultCheck {
 public:
  ResultCheck(const ReportHost& host, Files& files, const GroupFacts& facts)
      : host_(host), wanted_(idsOf(facts)), pages_(files, contentOf) {}

  /// Why a result cannot be that of a system; "" when it can be.
  std::string misfitOf(const std::string& result, const SystemFact& system);
  /// The ids of silent staves that results have, and no page.
  const std::map<int, std::size_t>& added() const { return added_; }

 private:
  Contents contentsOf(const SystemFact& system);
  std::string wrongIds(const Contents& found) const;
  static std::string wrongItems(const SystemFact& system, const Contents& wanted, const Contents& found);

  const ReportHost& host_;
  Ids wanted_;
  std::map<int, std::size_t> added_;
  RecentPages<PageContent> pages_;
};

Contents ResultCheck::contentsOf(const SystemFact& system) {
  pages_.keepOnlyFilesOf(system);
  Contents contents;
  std::set<std::pair<std::string, float>> known;
  for (const StaffFact& staff : system.staves) {
    const auto number = static_cast<float>(numericValue(staff.staff));
    const auto& staves = pages_.page(staff.file).staves;
    const auto content = staves.find(number);
    if (content != staves.end() && known.emplace(staff.file, number).second) {
      contents[std::abs(int{staff.instrument})].add(content->second);
    }
  }
  return contents;
}

/// Every result has the instruments of the group, and no other that plays.
std::string ResultCheck::wrongIds(const Contents& found) const {
  std::vector<int> missing;
  std::vector<int> surplus;
  std::copy_if(wanted_.begin(), wanted_.end(), std::back_inserter(missing),
               [&](int id) { return !found.contains(id); });
  for (const auto& [id, content] : found) {
    if (id != 0 && content.hasNotes && !wanted_.contains(id)) {
      surplus.push_back(id);
    }
  }
  if (!missing.empty()) {
    return " has no staff of " + listed(missing) + ".";
  }
  return surplus.empty() ? "" : " has a staff of " + listed(surplus) + ", which no page has.";
}

/// Staves of the system are in its result as they were, and the others have no notes.
std::string ResultCheck::wrongItems(const SystemFact& system, const Contents& wanted, const Contents& found) {
  const std::string number = std::to_string(system.number);
  for (const auto& [id, content] : found) {
    const auto own = wanted.find(id);
    if (own == wanted.end() && content.hasNotes) {
      return " has notes of " + std::to_string(id) + ", which does not play in system " + number + ".";
    }
    const std::size_t missing = own == wanted.end() ? 0 : missingItems(own->second, content);
    if (missing > 0) {
      return " lacks " + counted(missing, "item") + " that the staff of " + std::to_string(id) + " in system " +
             number + " has.";
    }
  }
  return "";
}

std::string ResultCheck::misfitOf(const std::string& result, const SystemFact& system) {
  const std::string name = host_.nameOf(result);
  const auto bytes = readWhole(host_.files, result, readableBytes);
  if (!bytes) {
    return name + " is missing, the result of system " + std::to_string(system.number) + ".";
  }
  const PageContent content = contentOf(*bytes);
  Contents found;
  for (const auto& [number, staff] : content.staves) {
    if (staff.isStaff) {
      found[staff.instrument].add(staff);
    }
  }
  if (content.isDamaged || found.empty()) {
    return name + " is damaged.";
  }
  for (const auto& [id, staff] : found) {
    added_[id] += id != 0 && !wanted_.contains(id) ? 1U : 0U;
  }
  std::string misfit = wrongIds(found);
  if (misfit.empty()) {
    misfit = wrongItems(system, contentsOf(system), found);
  }
  return misfit.empty() ? "" : name + misfit;
}

/// The files that are named like a result of another system, and are no pages of these.
std::vector<std::string> surplusResults(const ReportHost& host, const std::string& firstResult,
                                        const GroupFacts& facts) {
  std::vector<std::string> names;
  std::set<std::string> pages;
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    names.push_back(resultName(firstResult, static_cast<std::size_t>(facts.systemNumber(s))));
    for (const std::string& file : filesOf(facts.system(s))) {
      pages.insert(host.machine.upperCase(file));
    }
  }
  std::vector<std::string> surplus = proof::strayResults(host.files, host.machine, firstResult, names).surplus;
  std::erase_if(surplus, [&](const std::string& name) { return pages.contains(host.machine.upperCase(name)); });
  return surplus;
}

}  // namespace

ResultMisfits resultMisfits(const ReportHost& host, Files& files, const std::string& firstResult,
                            const GroupFacts& facts) {
  ResultCheck check(host, files, facts);
  ResultMisfits all;
  std::vector<std::string>& misfits = all.sentences;
  std::size_t last = 0;
  std::size_t missing = 0;
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    const auto number = static_cast<std::size_t>(facts.systemNumber(s));
    last = std::max(last, number);
    std::string misfit = check.misfitOf(resultName(firstResult, number), facts.system(s));
    if (misfit.empty()) {
      continue;
    }
    misfits.push_back(std::move(misfit));
    if (!host.files.openInput(resultName(firstResult, number))) {
      ++missing;
      all.firstMissing = all.firstMissing == 0 ? number : all.firstMissing;
    }
  }
  if (missing != misfits.size() || all.firstMissing + missing != last + 1) {
    all.firstMissing = 0;
  }
  for (const auto& [id, count] : check.added()) {
    if (count > 0 && count < facts.systemCount()) {  // a list of instruments adds it to all
      misfits.push_back(counted(count, "result") + (count == 1 ? " has" : " have") + " a staff of " +
                        std::to_string(id) + ", which no page has.");
    }
  }
  for (const std::string& file : surplusResults(host, firstResult, facts)) {
    misfits.push_back(host.nameOf(file) + " is there, but the pages have only " + counted(last, "system") + ".");
  }
  return all;
}

}  // namespace kiv::report
