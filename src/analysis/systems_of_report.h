#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "analysis/report_index.h"
#include "analysis/verdict.h"
#include "analysis/written_records.h"
#include "base/hash_index.h"

namespace kiv {

/// The distinct identifiers of records, compared as texts.
class Identifiers {
 public:
  void add(std::string_view record);
  std::size_t count() const { return texts_.size(); }

 private:
  std::set<std::string, std::less<>> texts_;
};

/// Adds the records of a report to a table of systems.
class SystemsReader {
 public:
  /// The table, which must outlive this, is cleared.
  explicit SystemsReader(SystemTable& table);
  /// A record whose system or identifier is no number of 16 bits ends the program.
  void add(std::string_view record);
  /// All records have been added.
  void finish() { table_.instrumentCount = identifiers_.count(); }

 private:
  SystemTable::System& system(std::int16_t number);

  SystemTable& table_;
  HashIndex index_;         // of its systems, by number
  std::size_t latest_ = 0;  // the system of the last record
  Identifiers identifiers_;
};

/// Fills a table with the systems of a report while it is written, for a run that keeps no report.
class SystemsOfReport : public WrittenRecords {
 public:
  /// The table, which must outlive this, is cleared. So is an index that is to have the records, too.
  explicit SystemsOfReport(SystemTable& table, ReportIndex* index = nullptr) : reader_(table) {
    if (index != nullptr) {
      indexReader_.emplace(*index);
    }
  }

  /// The report is complete. Ends the program where reading it back would.
  void finish();

 private:
  void addRecord(std::string_view record) override;

  SystemsReader reader_;
  std::optional<IndexReader> indexReader_;  // if there is an index
  std::exception_ptr programEnd_;           // null unless a record ends the program
};

}  // namespace kiv
