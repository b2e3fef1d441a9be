#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "diagnostics/listed_staff.h"
#include "diagnostics/system_facts.h"

namespace kiv {

/// A staff item that a record of the report was made of.
struct FoundStaff {
  ItemPlace place;
  std::string name;  ///< the first text with a letter in it that lies left of the staff; "" when there is none
};

/// A staff of a system as the report lists it; its texts are in StaffFact. The references are to the facts.
struct SystemRow {
  std::int16_t instrument = 0;
  float instrumentNumber = 0;  ///< before it was rounded
  float newStaff = 0;          ///< its number in the page
  float staff = 0;             ///< its number in the file
  int occurrence = 1;          ///< as in StaffFact
  const std::string& file;
  const std::string* name = nullptr;  ///< null when the page must be asked
  ItemPlace place;
};

/// The staff with its texts.
StaffFact factOf(const SystemRow& row);

/// Whether it is one of the numbers that staves of real pages have. Their texts in a report differ.
bool isOrdinaryNumber(float number);

/// The systems of a report, gathered page by page while it is written. Every staff of a group is kept, so in few bytes.
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

  /// Numbers a file. Its name must outlive this.
  std::uint32_t addFile(const std::string& name);
  /// Numbers a name of staves, which is kept once.
  std::uint32_t addName(const std::string& name);
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
  /// The staff of a file with a number; nullopt where the page must be asked.
  std::optional<FoundStaff> find(std::uint32_t file, double staff) const;
  /// Whether a system has staves of this file and of another one.
  bool isShared(std::uint32_t file) const;

 private:
  /// Some of the rows.
  struct Range {
    std::uint32_t first = 0;
    std::uint32_t end = 0;
  };
  struct File {
    const std::string* name = nullptr;
    Range firstPage;  // the rows of the first page with this file
    Range lastPage;   // the same of the last one
  };
  struct System {
    std::int16_t number = 0;
    Range rows;
  };

  int occurrencesIn(Range rows, const Row& row) const;
  void countOccurrences(bool hasFileTwice);
  std::size_t systemOf(std::int16_t number, std::uint32_t firstRow);
  template <typename Visitor>
  void visitRows(std::size_t system, Visitor visit) const;

  std::vector<File> files_;
  std::map<std::string, std::uint32_t> names_;
  std::vector<const std::string*> nameOf_;  // by number
  std::deque<Row> rows_;
  std::size_t firstOfPage_ = 0;            // of the rows
  std::vector<std::int16_t> systemOfRow_;  // of those of the page, the numbers
  std::vector<System> systems_;
  std::map<std::size_t, std::vector<Range>> moreRows_;  // of systems whose rows do not follow one another
  std::int16_t highest_ = 0;                            // of the numbers of systems
};

}  // namespace kiv
