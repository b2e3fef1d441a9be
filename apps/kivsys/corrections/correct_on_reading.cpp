#include "apps/kivsys/corrections/correct_on_reading.h"

#include <algorithm>
#include <set>
#include <utility>

#include "apps/kivsys/corrections/planned_pages.h"
#include "base/counted.h"
#include "base/sha256.h"

namespace kiv {
namespace {

/// The pages of a run that its corrections are for.
class PagesToCorrect {
 public:
  PagesToCorrect(ConsoleSystem& system, const SelectedPages& selected, IdRequests requests)
      : system_(system), selected_(selected), requests_(std::move(requests)) {}

  std::vector<std::string> plan(CorrectedBadPages badPages) {
    std::vector<std::string> errors = read(badPages);
    if (badPages == CorrectedBadPages::skipped) {
      dropSkipped();
    }
    return errors.empty() ? planPages(system_, requests_, pages_) : errors;
  }

  PageCorrections corrections() && {
    PageCorrections corrections{std::move(requests_.tables), {}, 0, requests_.undecided + requests_.leftOut};
    for (PlannedPage& page : pages_) {
      if (!page.changes.empty()) {
        corrections.ids += page.changes.size();
        corrections.pages[page.file.name] = {
            sha256(page.before), [changes = std::move(page.changes)](std::string_view bytes) {
              return repair::withIds(bytes, changes).value_or("");  // it was made before, of the same page
            }};
      }
    }
    return corrections;
  }

  /// The pages that change, corrected.
  std::map<std::string, std::string> contents() && {
    std::map<std::string, std::string> contents;
    for (PlannedPage& page : pages_) {
      if (!page.changes.empty()) {
        contents[page.file.name] = std::move(page.after);
      }
    }
    return contents;
  }

 private:
  std::vector<std::string> read(CorrectedBadPages badPages);
  void dropSkipped();

  ConsoleSystem& system_;
  const SelectedPages& selected_;
  IdRequests requests_;
  std::vector<PlannedPage> pages_;
  std::set<std::string> skipped_;  // as requests name them
};

/// Reads the pages that are named in requests. Returns why one cannot be read.
std::vector<std::string> PagesToCorrect::read(CorrectedBadPages badPages) {
  std::set<std::string> wanted;
  for (const repair::IdRequest& request : requests_.requests) {
    wanted.insert(request.page);
  }
  std::vector<std::string> errors;
  for (const FoundFile& file : distinctPages(system_.pages())) {
    const std::string name = nameOfPage(system_, file.name);
    if (!wanted.contains(name)) {
      continue;
    }
    PlannedPage page{file, "", "", {}};
    std::string error = readPage(system_, page);
    const bool isBad = !error.empty() || !repair::idsOf(page.before);
    if (isBad && badPages == CorrectedBadPages::skipped) {
      skipped_.insert(name);
    } else if (!error.empty()) {
      errors.push_back(std::move(error));
    } else {
      pages_.push_back(std::move(page));
    }
  }
  return errors;
}

/// Leaves out the corrections of pages that the run skips.
void PagesToCorrect::dropSkipped() {
  for (const FoundFile& page : selected_.badPages) {
    skipped_.insert(nameOfPage(system_, page.name));
  }
  auto& requests = requests_.requests;
  requests.erase(std::remove_if(requests.begin(), requests.end(),
                                [&](const repair::IdRequest& request) { return skipped_.contains(request.page); }),
                 requests.end());
}

}  // namespace

std::vector<std::string> correctOnReading(ConsoleSystem& system, SelectedPages& pages, const TableOptions& options,
                                          CorrectedBadPages badPages) {
  for (const std::string& file : options.files) {
    if (const std::string path = pathOfTable(system, file); !path.empty()) {
      pages.tables.push_back(path);
      system.protectFile(path);
    }
  }
  PagesToCorrect corrected(system, pages, readTables(system, options));
  std::vector<std::string> errors = corrected.plan(badPages);
  if (errors.empty()) {
    system.correctPages(std::move(corrected).corrections());
  }
  return errors;
}

CorrectedGroupPages correctedBy(ConsoleSystem& system, const SelectedPages& pages, const TableOptions& options) {
  PagesToCorrect corrected(system, pages, readTables(system, options));
  CorrectedGroupPages result;
  result.errors = corrected.plan(CorrectedBadPages::skipped);
  if (result.errors.empty()) {
    result.pages = std::move(corrected).contents();
  }
  return result;
}

std::string correctionNote(const PageCorrections& corrections) {
  return "kivsys: note: " + counted(corrections.ids, "id") + " in " + counted(corrections.pages.size(), "page") +
         " corrected on reading" +
         (corrections.leftOut > 0 ? ", " + counted(corrections.leftOut, "row") + " left out" : "") +
         "; no page is changed\n";
}

}  // namespace kiv
