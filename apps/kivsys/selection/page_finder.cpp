#include "apps/kivsys/selection/page_finder.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "apps/kivsys/selection/natural_order.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "input/file_names.h"
#include "platform/console/stop_signals.h"
#include "platform/native_file.h"
#include "platform/separators.h"

namespace kiv {
namespace {

constexpr std::size_t mostPages = std::numeric_limits<std::int16_t>::max();

}  // namespace

/// Looks in the folder of the run, which has not been entered yet. Only a file that is not there as it is written needs
/// a search.
PageFinder::Look PageFinder::lookFor(const std::string& name) {
  const std::string full = NativeSystem::isFullName(name)
                               ? name
                               : search_.folder + (endsWithBackslash(system_, search_.folder) ? "" : "\\") + name;
  const std::string exact = NativeSystem::exactPath(full);
  const Fetch fetch = fetchOf(pages_.size());
  ReadCheck check = checkReadable(exact, fetch);
  const std::string path = check.failure ? system_.diskName(full) : exact;
  return {path, path == exact ? check : checkReadable(path, fetch)};
}

std::string PageFinder::problemOfPage(const WantedPage& page, const std::string& upperName, const Look& look) {
  if (lastBackslash(system_, page.name) == std::string::npos) {
    const bool hasSlash = page.name.find('/') != std::string::npos;
    return "no folder in the name of the page: " + page.typed +
           (hasSlash ? "; write \\ for /, or leave out the 1 at the ends of all lines" : "");
  }
  if (look.check.failure) {
    const bool isMissing = kindOf(look.path) == PathKind::missing && !page.place.empty();
    return isMissing ? "no such page: " + page.typed : "cannot read " + page.typed + ": " + *look.check.failure;
  }
  if (hasTwoBackslashes(system_, page.name)) {
    return "a page cannot have two backslashes in its name, as network paths have: " + page.typed;
  }
  if (!pages_.empty() &&
      (folder_.name != justPath(system_, upperName) || folder_.path != folderOfPath(system_, look.path))) {
    return "not in the folder of the first page: " + page.typed;
  }
  return "";
}

std::string PageFinder::conflictOf(const WantedPage& page, const std::string& upperName, const std::string& path) {
  if (const auto known = known_.find(upperName); known != known_.end() && known->second.path != path) {
    return page.typed + " and " + known->second.name + " differ in case only, and cannot be in one group";
  }
  return "";
}

std::string PageFinder::add(const WantedPage& page) {
  endIfStopped();
  if (page.name.find_first_of("\r\n") != std::string::npos) {
    return page.place + "a page file whose name holds a line end cannot be listed in a names file";
  }
  if (const auto reason = refusalOfName(system_, page.typed, "page file")) {
    return page.place + *reason;
  }
  const Look look = lookFor(page.name);
  const std::string& path = look.path;
  if (names_.size() == mostPages) {
    return page.place + "a group cannot have more than 32767 pages: " + page.typed;
  }
  const std::string upperName = system_.upperCase(page.name);
  const std::string problem = problemOfPage(page, upperName, look);
  if (const std::string conflict = conflictOf(page, upperName, path); !conflict.empty()) {
    return page.place + conflict;  // under one name there is one page
  }
  const bool isNew = known_.emplace(upperName, FoundFile{page.typed, path}).second;
  if (problem.empty()) {
    if (pages_.empty()) {
      folder_ = {justPath(system_, upperName), folderOfPath(system_, path)};
    }
    pages_.push_back({page.name, path, look.check.stamp});
    if (!isNew && std::find(repeated_.begin(), repeated_.end(), page.typed) == repeated_.end()) {
      repeated_.push_back(page.typed);
    }
  }
  if (problem.empty() || search_.skipsBadPages) {
    names_.push_back(page.name);
    if (!problem.empty()) {
      badPages_.push_back({page.name, page.typed});
      badPaths_.push_back(path);
    }
    return "";
  }
  return page.place + problem;
}

bool PageFinder::putIntoNaturalOrder() {
  const auto isBefore = [&](const std::string& a, const std::string& b) {
    return comesBefore(system_.upperCase(a), system_.upperCase(b));
  };
  if (std::is_sorted(names_.begin(), names_.end(), isBefore)) {
    return false;
  }
  std::stable_sort(names_.begin(), names_.end(), isBefore);
  std::stable_sort(pages_.begin(), pages_.end(),
                   [&](const FoundFile& a, const FoundFile& b) { return isBefore(a.name, b.name); });
  return true;
}

void PageFinder::giveTo(SelectedPages& selected) && {
  for (const std::string& name : std::exchange(names_, {})) {
    selected.names += name + " 1\r\n";
  }
  known_.clear();
  selected.pages = std::move(pages_);
  selected.badPages = std::move(badPages_);
  selected.badPaths = std::move(badPaths_);
  selected.repeated = std::move(repeated_);
}

}  // namespace kiv
