#include "repair/fix_plan.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <utility>

#include "base/number.h"

namespace kiv::repair {
namespace {

/// Gathers the changes of requests.
class Planner {
 public:
  explicit Planner(const std::vector<PageToFix>& pages) : pages_(pages), wanted_(pages.size()) {
    for (std::size_t page = 0; page < pages.size(); ++page) {
      if (!pageOf_.emplace(pages[page].name, page).second) {
        ambiguous_.insert(pages[page].name);
      }
    }
  }

  void add(const IdRequest& request) {
    const auto page = pageOf_.find(request.page);
    if (page == pageOf_.end()) {
      return fail(request.origin, request.page + " is none of the pages");
    }
    if (ambiguous_.contains(request.page)) {
      return fail(request.origin, request.page + " is the name of more than one page");
    }
    const PageToFix& target = pages_[page->second];
    const PageId* found = nullptr;
    for (const PageId& id : target.ids) {
      if (!isMeant(id, request)) {
        continue;
      }
      if (found != nullptr) {
        return fail(request.origin, target.name + " has " + nameOf(request) + " more than once; name its item");
      }
      found = &id;
    }
    if (found == nullptr) {
      return fail(request.origin, target.name + " has no " + nameOf(request));
    }
    if (request.oldId && !hasId(*found, *request.oldId)) {
      return fail(request.origin, nameOf(request) + " of " + target.name + " has the id " + generalNumber(found->id) +
                                      ", not " + generalNumber(*request.oldId));
    }
    want(page->second, *found, request.newId, request.origin);
  }

  void add(const IdMapping& mapping) {
    bool isFound = false;
    for (std::size_t page = 0; page < pages_.size(); ++page) {
      for (const PageId& id : pages_[page].ids) {
        if (hasId(id, static_cast<float>(mapping.oldId))) {
          want(page, id, mapping.newId, mapping.origin);
          isFound = true;
        }
      }
    }
    if (!isFound && !mapping.mayBeMissing) {
      fail(mapping.origin, "no page has the id " + std::to_string(mapping.oldId));
    }
  }

  FixPlan plan() {
    FixPlan plan{{}, std::move(errors_)};
    for (const auto& wanted : wanted_) {
      std::vector<IdChange>& changes = plan.changes.emplace_back();
      for (const auto& [item, want] : wanted) {
        if (want.change.at.id != static_cast<float>(want.change.newId)) {
          changes.push_back(want.change);
        }
      }
    }
    return plan;
  }

 private:
  struct Wanted {
    IdChange change;
    std::string origin;
  };

  /// Whether the item has this id, as the file has it or as an analysis counts it.
  static bool hasId(const PageId& at, float id) { return at.id == id || countedId(at) == id; }

  static bool isMeant(const PageId& id, const IdRequest& request) {
    const ItemType type = request.isCue ? ItemType::rest : ItemType::staff;
    return id.type == type && id.staff == request.staff && (request.item == 0 || id.item == request.item);
  }

  static std::string nameOf(const IdRequest& request) {
    return (request.isCue ? "cue in staff " : "staff ") + generalNumber(request.staff) +
           (request.item == 0 ? "" : " at item " + std::to_string(request.item));
  }

  void fail(const std::string& origin, const std::string& reason) { errors_.push_back(origin + ": " + reason); }

  void want(std::size_t page, const PageId& id, std::int16_t newId, const std::string& origin) {
    const auto [known, isNew] = wanted_[page].emplace(id.item, Wanted{{id, newId}, origin});
    if (!isNew && known->second.change.newId != newId) {
      fail(origin, known->second.origin + " gives item " + std::to_string(id.item) + " of " + pages_[page].name +
                       " the id " + std::to_string(known->second.change.newId) + ", this " + std::to_string(newId));
    }
  }

  const std::vector<PageToFix>& pages_;
  std::map<std::string, std::size_t> pageOf_;
  std::set<std::string> ambiguous_;                     // names of several pages
  std::vector<std::map<std::int16_t, Wanted>> wanted_;  // of each page, by item
  std::vector<std::string> errors_;
};

}  // namespace

std::vector<IdMapping> inRisingOrder(const std::vector<std::int16_t>& ids, const std::string& origin) {
  std::vector<std::int16_t> rising = ids;
  std::sort(rising.begin(), rising.end());
  std::vector<IdMapping> mappings;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (ids[i] != rising[i]) {
      mappings.push_back({origin, ids[i], rising[i], true});
    }
  }
  return mappings;
}

FixPlan planFix(const std::vector<PageToFix>& pages, const std::vector<IdRequest>& requests,
                const std::vector<IdMapping>& mappings) {
  Planner planner(pages);
  for (const IdRequest& request : requests) {
    planner.add(request);
  }
  for (const IdMapping& mapping : mappings) {
    planner.add(mapping);
  }
  return planner.plan();
}

}  // namespace kiv::repair
