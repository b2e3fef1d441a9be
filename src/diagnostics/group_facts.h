#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/analysis_observer.h"
#include "base/numbered_texts.h"
#include "diagnostics/instruments.h"
#include "diagnostics/listed_systems.h"
#include "diagnostics/page_file_facts.h"
#include "diagnostics/page_losses.h"
#include "diagnostics/system_facts.h"

namespace kiv {

/// What diagnostics need to know of a group.
struct WantedFacts {
  bool instruments = false;
  /// nullopt for none. Of staves, the losses of all items are found, too, once a page shows that the group needs a
  /// conversion.
  std::optional<LossScan> losses = std::nullopt;
};

/// Gathers facts about a group while an analysis reads it: give it to the analysis as its observer. Pages and report
/// need not be read again then. Of an analysis that ended early, only what it had finished is known.
class GroupFacts : public AnalysisObserver {
 public:
  explicit GroupFacts(WantedFacts wanted) : wanted_(wanted) {}

  std::unique_ptr<FileObserver> observerAhead() const override;
  FileObserver* beginFile(const std::string& musFileName, std::string_view bytes,
                          std::unique_ptr<FileObserver> ahead) override;
  void endFile() override;
  void endPage(const ItemTable& table, const std::vector<int>& staves) override;

  /// The instruments in their order; none unless they are wanted.
  std::vector<Instrument> instruments() const { return instruments_.instruments(); }
  /// The systems of the report, in the order of the pages. They are put together when they are asked for.
  std::size_t systemCount() const { return listed_.systemCount(); }
  std::int16_t systemNumber(std::size_t system) const { return listed_.systemNumber(system); }
  /// The staves of the system with an index, from the top down.
  std::vector<SystemRow> rows(std::size_t system) const { return listed_.rows(system); }
  /// Their instruments.
  std::set<std::int16_t> instrumentsOf(std::size_t system) const { return listed_.instrumentsOf(system); }
  /// Those of all systems.
  std::set<std::int16_t> instrumentsOfSystems() const { return listed_.instruments(); }
  SystemFact system(std::size_t system) const;
  /// The number that rows have for a file; nullopt for one that was not read.
  std::optional<std::uint32_t> fileNumber(const std::string& musFileName) const { return fileNames_.find(musFileName); }
  /// Whether a page of several files has this one.
  bool sharesASystem(const std::string& musFileName) const;
  /// The staff item that a record of these systems was made of. nullopt where the page must be asked, as two staves of
  /// the file may be meant.
  std::optional<FoundStaff> staff(const StaffFact& fact) const;
  /// What a run loses of a page file; null for a file that was not read, and for a scan that was not wanted.
  const PageLosses* lossesOf(const std::string& musFileName, LossScan scan) const;

 private:
  /// What is known of a file. There are very many of them, so they are small.
  struct FileFacts {
    std::unique_ptr<PageLosses> losses;  // null when there are none
    std::optional<LossScan> scan;        // that found the losses, once the file has been read to its end
  };
  /// A file of the page that is being read.
  struct PageFile {
    std::uint32_t number = 0;
    std::unique_ptr<PageFileFacts> facts;
  };
  void addRow(const ItemTable& table, int row, std::vector<SystemStaff>& staves);
  void addRows(const ItemTable& table, const std::vector<int>& rows);
  void addFileOfPage(std::uint32_t number);
  bool useFacts(std::unique_ptr<FileObserver> ahead);
  std::optional<LossScan> wantedLosses() const;
  bool hasFileTwice() const;
  void compareSystems();
  PageFile& file() { return pageFiles_[fileCount_ - 1]; }

  const WantedFacts wanted_;
  std::vector<PageFile> pageFiles_;  // reused by later pages
  std::size_t fileCount_ = 0;        // of them, those of this page
  std::string_view bytes_;           // of the file that is being read
  std::optional<LossScan> scan_;     // for losses of this file
  NumberedTexts fileNames_;          // their numbers are those of the listed systems, too
  std::deque<FileFacts> files_;      // by number
  ListedSystems listed_;
  std::vector<std::int16_t> firstSystem_;      // its instruments
  std::atomic<bool> needsConversion_ = false;  // as far as the pages show it; another thread may ask
  InstrumentCollector instruments_;
  PageLosses noLosses_;
};

}  // namespace kiv
