#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
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
  /// nullopt for none. Of staves, the losses of all items are found, too, once a page shows that the group needs a
  /// conversion.
  std::optional<LossScan> losses = std::nullopt;
};

/// A staff item that a record of the report was made of.
struct FoundStaff {
  ItemPlace place;
  std::string name;  ///< the first text with a letter in it that lies left of the staff; "" when there is none
};

/// Gathers facts about a group while an analysis reads it: give it to the analysis as its observer. Pages and report
/// need not be read again then. Of an analysis that ended early, only what it had finished is known.
class GroupFacts : public AnalysisObserver {
 public:
  explicit GroupFacts(WantedFacts wanted) : wanted_(wanted) {}

  void beginFile(const std::string& musFileName, std::string_view bytes) override;
  void addItem(const PageWalker& page) override;
  void skipItems(MusReader& reader, TypeSet types) override;
  void endFile() override;
  void endPage(const ItemTable& table) override;

  /// The instruments in their order; none unless they are wanted.
  std::vector<Instrument> instruments() const { return instruments_.instruments(); }
  /// The systems as the report lists them, in the order of the pages.
  const std::vector<SystemFact>& systems();
  /// The staff item that a record of these systems was made of. nullopt where the page must be asked, as two staves of
  /// the file may be meant.
  std::optional<FoundStaff> staff(const StaffFact& fact) const;
  /// What a run loses of a page file; null for a file that was not read, and for a scan that was not wanted.
  const PageLosses* lossesOf(const std::string& musFileName, LossScan scan) const;

 private:
  /// A staff that an analysis sees.
  struct ReadStaff {
    ItemPlace place;
    float number = 0;
    float position = 0;
    std::string name;
    bool isAlone = false;  // no other one in the file can be meant by its number
  };
  /// What is known of a file.
  struct FileFacts {
    PageLosses losses;
    std::optional<LossScan> scan;  // that found the losses, once the file has been read to its end
    // Of the page of the file: indices in rows_.
    std::size_t firstRow = 0;
    std::size_t endRow = 0;
  };
  /// A file of the page that is being read.
  struct PageFile {
    const std::string* name = nullptr;  // a key of files_
    std::vector<ReadStaff> staves;      // in the order of the file
    StaffDescriber described;
  };
  /// A staff as the report lists it. There are very many of them, so they are small.
  struct ListedRow {
    const std::string* file = nullptr;  // a key of files_
    const std::string* name = nullptr;  // one of names_; null when the staff is not certain
    std::int16_t system = 0;
    std::int16_t instrument = 0;
    float instrumentNumber = 0;
    float newStaff = 0;
    float staff = 0;
    std::int16_t item = 0;
    std::uint32_t offset = 0;
  };

  void addStaff(const PageWalker& page);
  void addRow(const ItemTable& table, int row, std::vector<SystemStaff>& staves);
  static void markLoneStaves(std::vector<ReadStaff>& staves);
  void addRows(const ItemTable& table);
  void compareSystems(std::size_t firstRow);
  PageFile& file() { return pageFiles_[fileCount_ - 1]; }

  WantedFacts wanted_;
  std::vector<PageFile> pageFiles_;  // reused by later pages
  std::size_t fileCount_ = 0;        // of them, those of this page
  std::string_view bytes_;           // of the file that is being read
  std::optional<LossScan> scan_;     // for losses of this file
  PageLossFinder lossFinder_;
  std::unordered_map<std::string, FileFacts> files_;  // by the names of all files
  std::set<std::string> names_;                       // that texts give to staves
  std::vector<ListedRow> rows_;
  std::vector<std::int16_t> firstSystem_;  // its instruments
  bool needsConversion_ = false;           // as far as the pages show it
  InstrumentCollector instruments_;
  std::optional<std::vector<SystemFact>> systems_;  // once they were asked for
};

}  // namespace kiv
