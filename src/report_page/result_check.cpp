#include "report_page/result_check.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <set>

#include "base/number.h"
#include "mus/format.h"
#include "mus/page_walker.h"

namespace kiv::report {
namespace {

using Ids = std::set<int>;

/// The ids of all staves; 0 stands for no instrument.
Ids idsOf(const std::vector<SystemFact>& systems) {
  Ids ids;
  for (const SystemFact& system : systems) {
    for (const StaffFact& staff : system.staves) {
      ids.insert(std::abs(int{staff.instrument}));
    }
  }
  ids.erase(0);
  return ids;
}

/// The ids of the staves of a page; nullopt when it is damaged or has no staff.
std::optional<Ids> idsOf(const std::string& bytes) {
  PageWalker walker(bytes);
  Ids ids;
  bool hasStaff = false;
  ReadStatus status = walker.findItem();
  for (; status == ReadStatus::itemRead; status = walker.findItem()) {
    if (walker.type() == ItemType::staff) {
      hasStaff = true;
      ids.insert(toInt16(std::fabs(walker.par(par::instrument))).value_or(0));
    }
  }
  return hasStaff && status == ReadStatus::endOfItems ? std::optional(ids) : std::nullopt;
}

std::string listed(const std::vector<int>& ids) {
  std::string words;
  for (const int id : ids) {
    words += (words.empty() ? "" : ", ") + std::to_string(id);
  }
  return words;
}

/// Why a result cannot be that of a system; "" when it can be.
std::string misfitOf(const ReportHost& host, const std::string& result, std::size_t system, const Ids& wanted) {
  const std::string name = host.nameOf(result);
  const auto bytes = readWhole(host.files, result, readableBytes);
  if (!bytes) {
    return name + " is missing, the result of system " + std::to_string(system) + ".";
  }
  const auto ids = idsOf(*bytes);
  if (!ids) {
    return name + " is damaged.";
  }
  std::vector<int> missing;
  std::set_difference(wanted.begin(), wanted.end(), ids->begin(), ids->end(), std::back_inserter(missing));
  return missing.empty() ? "" : name + " has no staff of " + listed(missing) + ".";
}

}  // namespace

std::vector<std::string> resultMisfits(const ReportHost& host, const std::string& firstResult,
                                       const std::vector<SystemFact>& systems) {
  const Ids wanted = idsOf(systems);
  std::vector<std::string> misfits;
  std::size_t last = 0;
  for (const SystemFact& system : systems) {
    const auto number = static_cast<std::size_t>(system.number);
    last = std::max(last, number);
    std::string misfit = misfitOf(host, resultName(firstResult, number), number, wanted);
    if (!misfit.empty()) {
      misfits.push_back(std::move(misfit));
    }
  }
  const std::string next = resultName(firstResult, last + 1);
  if (host.files.openInput(next)) {
    misfits.push_back(host.nameOf(next) + " is there, but the pages have only " + std::to_string(last) +
                      (last == 1 ? " system." : " systems."));
  }
  return misfits;
}

}  // namespace kiv::report
