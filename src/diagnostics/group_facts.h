#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "analysis/analysis_observer.h"
#include "diagnostics/instruments.h"
#include "diagnostics/page_losses.h"
#include "diagnostics/page_staves.h"
#include "diagnostics/system_facts.h"

namespace kiv {

/// What diagnostics need to know of a group.
struct WantedFacts {
  bool instruments = false;
  std::optional<LossScan> losses = std::nullopt;  ///< nullopt for none
};

/// Gathers facts about a group while an analysis reads it: give it to the analysis as its observer. Pages and report
/// need not be read again then. Of an analysis that ended early, only what it had finished is known.
class GroupFacts : public AnalysisObserver {
 public:
  explicit GroupFacts(WantedFacts wanted) : wanted_(wanted) {}

  void beginFile(const std::string& musFileName, std::string_view bytes) override;
  void addItem(const PageWalker& page) override;
  void endFile() override;
  void endPage(const ItemTable& table) override;

  /// The instruments in their order; none unless they are wanted.
  std::vector<Instrument> instruments() const { return instruments_.instruments(); }
  /// The systems as the report lists them, in the order of the pages.
  const std::vector<SystemFact>& systems();
  /// What a run loses of a page file; null for a file that was not read, and for a scan that was not wanted.
  const PageLosses* lossesOf(const std::string& musFileName, LossScan scan) const;

 private:
  /// A staff that an analysis sees.
  struct ReadStaff {
    int item = 0;
    float number = 0;
  };
  /// A file of the page that is being read.
  struct PageFile {
    const std::string* name = nullptr;  // a key of losses_
    std::vector<ReadStaff> staves;      // in the order of the file
    StaffDescriber described;
  };
  /// A staff as the report lists it. There are very many of them, so they are small.
  struct ListedRow {
    const std::string* file = nullptr;  // a key of losses_
    std::int16_t system = 0;
    std::int16_t instrument = 0;
    float instrumentNumber = 0;
    float newStaff = 0;
    float staff = 0;
  };

  void addStaff(const PageWalker& page);
  void addRow(const ItemTable& table, int row, std::vector<SystemStaff>& staves);
  PageFile& file() { return pageFiles_[fileCount_ - 1]; }

  WantedFacts wanted_;
  std::vector<PageFile> pageFiles_;  // reused by later pages
  std::size_t fileCount_ = 0;        // of them, those of this page
  std::string_view bytes_;           // of the file that is being read
  bool findsLosses_ = false;         // of the staves of this file
  PageLossFinder lossFinder_;
  std::unordered_map<std::string, PageLosses> losses_;  // by the names of all files
  std::vector<ListedRow> rows_;
  InstrumentCollector instruments_;
  std::optional<std::vector<SystemFact>> systems_;  // once they were asked for
};

}  // namespace kiv
