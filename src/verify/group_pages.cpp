#include "verify/group_pages.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kiv::proof {

void GroupPages::note(const std::string& name, std::string_view bytes, FileFacts& facts) {
  if (!facts.note(bytes)) {
    changed_.insert(name);
  }
}

LoadedPage GroupPages::load(const std::string& name, FileFacts& facts) {
  LoadedPage page = loadPage(files_, name);
  note(name, page.bytes, facts);
  return page;
}

LoadedPage GroupPages::load(const std::string& name) {
  const auto input = inputs_.find(name);
  return load(name, input ? inputs_.facts(*input) : others_[name]);
}

LoadedPage GroupPages::loadResult(const std::string& name, FileFacts& facts) {
  LoadedPage page = load(name, facts);
  if (const auto input = inputs_.find(name)) {
    note(name, page.bytes, inputs_.facts(*input));
  }
  return page;
}

LoadedPage GroupPages::readInput(const std::string& name) {
  progress_(inputsRead_, inputs_.size(), "pages read");
  InputFacts& input = inputs_.facts(*inputs_.find(name));
  const bool isNew = !input.isRead;
  LoadedPage page = load(name, input);
  if (isNew) {
    ++inputsRead_;
    input.items = static_cast<std::uint32_t>(page.items.size());
    for (const PageItem& item : page.items) {
      if (isInstrumentNumber(item) && !std::isnan(item.item[par::staff])) {
        input.numberStaves.push_back(item.item[par::staff]);
      }
    }
    input.numberStaves.shrink_to_fit();
    std::sort(input.numberStaves.begin(), input.numberStaves.end());
  }
  return page;
}

std::optional<Finding> GroupPages::derive(SelectedFiles selected, const ReportSink& report) {
  inputs_ = InputFiles(std::move(selected.names));
  const SelectedPages pages(machine_, inputs_.selection());
  std::optional<Finding> failure = selected.failure;
  if (!failure) {
    failure = pages.failure() ? pages.failure() : deriveFrom(pages, report);
  }
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    if (!inputs_.facts(i).isRead) {
      readInput(inputs_.name(i));
    }
  }
  progress_(inputs_.size(), inputs_.size(), "pages read");
  return failure;
}

std::optional<Finding> GroupPages::deriveFrom(const SelectedPages& pages, const ReportSink& report) {
  LoadedPages files;
  FirstClefsOfGroup clefs;
  const auto filesOf = [&](const PageFiles& page) -> const LoadedPages& {
    files.clear();
    for (const std::string& name : page.files) {
      if (!files.contains(name)) {
        files.emplace(name, readInput(name));
      }
    }
    clefs.addPage(page, files);
    return files;
  };
  DerivedAnalysis derived = deriveAnalysis(machine_, pages, filesOf, report);
  verdict_ = std::move(derived.verdict);
  if (derived.failure) {
    return derived.failure;
  }
  if (!clefs.endedBy().empty()) {
    return Finding{clefs.endedBy(), 0, "has a clef of an instrument that 16 bits do not hold"};
  }
  firstClefs_ = std::move(clefs).take();
  return std::nullopt;
}

}  // namespace kiv::proof
