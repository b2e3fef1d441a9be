#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbered_texts.h"
#include "base/shared_lists.h"
#include "diagnostics/listed_staff.h"
#include "diagnostics/system_facts.h"

namespace kiv {

/// A staff item that a record of the report was made of.
struct FoundStaff {
  ItemPlace place;
  std::string name;  ///< the first text with a letter in it that lies left of the staff; "" when there is none
};

/// A staff of a system as the report lists it; its texts are in StaffFact. The views are of the facts.
struct SystemRow {
  std::int16_t instrument = 0;
  float instrumentNumber = 0;  ///< before it was rounded
  float newStaff = 0;          ///< its number in the page
  float staff = 0;             ///< its number in the file
  int occurrence = 1;          ///< as in StaffFact
  std::uint32_t fileNumber = 0;
  std::string_view file;
  std::optional<std::string_view> name;  ///< nullopt when the page must be asked
  ItemPlace place;
};

/// The staff with its texts.
StaffFact factOf(const SystemRow& row);

/// Whether it is one of the numbers that staves of real pages have. Their texts in a report differ.
bool isOrdinaryNumber(float number);

/// The systems of a report, gathered page by page while it is written. Every staff of a group is kept, so in few bytes:
/// most systems list the same staves, but for the file and the places in it.
class ListedSystems {
 public:
  /// A staff as the report lists it.
  struct Row {
    std::uint32_t file = 0;       ///< as addFile() has numbered it
    std::uint32_t name = noName;  ///< as addName() has numbered the one of the staff, if that is certain
    std::uint32_t offset = 0;     ///< of its item
    float instrumentNumber = 0;
    float newStaff = 0;
    float staff = 0;
    std::int32_t occurrence = 1;  ///< filled in here
    std::int16_t instrument = 0;
    std::int16_t item = 0;
  };
  static constexpr std::uint32_t noName = std::numeric_limits<std::uint32_t>::max();

  /// Numbers a file: 0, 1, 2 ... Its name must outlive this.
  std::uint32_t addFile(std::string_view name);
  /// Numbers a name of staves, which is kept once.
  std::uint32_t addName(std::string_view name) { return names_.add(name); }
  /// The next staff of the page.
  void add(std::int16_t system, const Row& row);
  /// A page may have one file twice.
  void endPage(bool hasFileTwice = false);

  /// The instruments of the systems of the page, before it ends.
  std::vector<std::vector<std::int16_t>> instrumentsOfPage() const;
  std::size_t systemCount() const { return systems_.size(); }
  std::int16_t systemNumber(std::size_t system) const { return systems_[system].number; }
  std::vector<SystemRow> rows(std::size_t system) const;
  std::set<std::int16_t> instrumentsOf(std::size_t system) const;
  /// Those of all systems.
  std::set<std::int16_t> instruments() const;
  /// The staff of a file with a number; nullopt where the page must be asked.
  std::optional<FoundStaff> find(std::uint32_t file, double staff) const;
  /// Whether a system has staves of this file and of another one.
  bool isShared(std::uint32_t file) const { return files_[file].isShared; }

 private:
  /// A row without its place, as systems have it in common.
  struct Listed {
    std::uint32_t fileStep = 0;  // from the file of the run's first row to that of the row; wraps around
    std::uint32_t name = noName;
    float instrumentNumber = 0;
    float newStaff = 0;
    float staff = 0;
    std::int32_t occurrence = 1;
    std::int16_t instrument = 0;

    explicit Listed(const Row& row, std::uint32_t firstFile);
    Listed() = default;
    bool operator==(const Listed& other) const;
  };
  struct ListedHash {
    std::size_t operator()(const Listed& listed) const;
  };
  using Lists = SharedLists<Listed, ListedHash>;
  /// Rows of one system that follow one another on a page.
  struct Run {
    std::uint32_t firstPlace = 0;
    std::uint32_t list = 0;
    std::uint32_t file = 0;  // of the first row
  };
  /// Some of the runs.
  struct Range {
    std::uint32_t first = 0;
    std::uint32_t end = 0;
  };
  struct File {
    std::string_view name;
    std::uint32_t firstPage = noPage;
    std::uint32_t lastPage = noPage;
    bool isShared = false;
  };
  struct System {
    std::int16_t number = 0;
    bool isOfSeveralFiles = false;
    std::uint32_t run = 0;  // its first one
  };

  Range runsOf(std::uint32_t page) const;
  std::size_t rowsIn(std::uint32_t run) const;
  std::vector<Row> rowsOf(std::uint32_t run) const;
  std::vector<Row> rowsOnPage(std::uint32_t page) const;
  static int occurrencesIn(std::span<const Row> rows, const Row& row);
  void countOccurrences(bool hasFileTwice);
  std::size_t systemOf(std::int16_t number, std::uint32_t run);
  void addRun(std::size_t firstRow, std::size_t end);
  void noteSharing(System& system, std::span<const Row> rows);
  Row rowOf(const Run& run, const Listed& listed, std::size_t place) const;
  SystemRow systemRow(const Row& row) const;
  template <typename Visitor>
  void visitRuns(std::size_t system, Visitor visit) const;

  static constexpr std::uint32_t noPage = std::numeric_limits<std::uint32_t>::max();

  std::deque<File> files_;
  NumberedTexts names_;
  std::vector<Row> page_;                  // the rows of the page
  std::vector<std::int16_t> systemOfRow_;  // of them, the numbers
  std::deque<std::uint32_t> offsets_;      // of the items of all rows
  std::deque<std::int16_t> items_;         // their numbers
  std::vector<std::uint32_t> firstRuns_;   // by the numbers of the pages
  Lists lists_;
  std::vector<Run> runs_;
  std::vector<System> systems_;
  std::map<std::size_t, std::vector<std::uint32_t>> moreRuns_;  // of systems that have several
  std::int16_t highest_ = 0;                                    // of the numbers of systems
};

}  // namespace kiv
