#include "verify/group_pages.h"

#include <functional>
#include <string_view>
#include <utility>

#include "base/sha256.h"

namespace kiv::proof {

bool isInstrumentNumber(const PageItem& read) {
  return read.item.type() == ItemType::instrumentNumber;
}

LoadedPage GroupPages::load(const std::string& name) {
  LoadedPage page = loadPage(files_, name);
  const std::size_t hash = std::hash<std::string_view>()(page.bytes);
  if (contents_.try_emplace(name, hash).first->second != hash) {
    changed_.insert(name);
  }
  return page;
}

LoadedPage GroupPages::readInput(const std::string& name, std::size_t all) {
  progress_(inputs_.size(), all, "pages read");
  LoadedPage page = load(name);
  const auto [entry, isNew] = inputs_.try_emplace(name);
  if (isNew) {
    InputFacts& input = entry->second;
    input.items = page.items.size();
    input.digest = page.bytes.empty() ? "" : sha256(page.bytes);
    for (const PageItem& item : page.items) {
      if (isInstrumentNumber(item)) {
        ++input.numbers[item.item[par::staff]];
      }
    }
    clefs_.emplace(name, stavesAndClefsOf(page));
  }
  return page;
}

std::optional<Finding> GroupPages::derive(const SelectedFiles& selected, const ReportSink& report) {
  const std::set<std::string> names(selected.names.begin(), selected.names.end());
  const SelectedPages pages = pagesOf(machine_, selected.names);
  std::optional<Finding> failure = selected.failure;
  if (!failure) {
    failure = pages.failure ? pages.failure : deriveFrom(pages.pages, names.size(), report);
  }
  for (const std::string& name : names) {
    if (!inputs_.contains(name)) {
      readInput(name, names.size());
    }
  }
  progress_(names.size(), names.size(), "pages read");
  return failure;
}

std::optional<Finding> GroupPages::deriveFrom(const std::vector<PageFiles>& pages, std::size_t all,
                                              const ReportSink& report) {
  LoadedPages files;
  const auto filesOf = [&](const PageFiles& page) -> const LoadedPages& {
    files.clear();
    for (const std::string& name : page.files) {
      if (!files.contains(name)) {
        files.emplace(name, readInput(name, all));
      }
    }
    return files;
  };
  derived_ = deriveAnalysis(machine_, pages, filesOf, report);
  if (derived_.failure) {
    return derived_.failure;
  }
  GroupClefs group = firstClefsOf(pages, clefs_);
  clefs_.clear();
  firstClefs_ = std::move(group.clefs);
  if (!group.endedBy.empty()) {
    return Finding{group.endedBy, 0, "has a clef of an instrument that 16 bits do not hold"};
  }
  return std::nullopt;
}

}  // namespace kiv::proof
