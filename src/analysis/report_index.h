#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/hash_index.h"
#include "base/numbered_texts.h"
#include "base/shared_lists.h"
#include "platform/files.h"

namespace kiv {

/// One record of the report: a staff, and its position in the result.
struct StaffRecord {
  std::int16_t instrId = 0;
  std::int16_t stavesUp = 0;  ///< read and kept, of no further use here
  std::int16_t staff = 0;     ///< its number in its file
  std::string file;
  std::int16_t newStaff = 0;  ///< its number in the result

  bool operator==(const StaffRecord&) const = default;
};

/// The records of a report, read once: by system. There are very many, and most systems list the same but for the file,
/// so their lists are shared.
struct ReportIndex {
  /// A record. Its numbers are 0 when one of them does not fit.
  struct Record {
    std::uint32_t fileStep = 0;   ///< from the file of the system's first record to its own; wraps around
    std::uint32_t unfitLine = 0;  ///< of a record with a number that 16 bits do not hold, from 1; else 0
    std::int16_t instrId = 0;
    std::int16_t stavesUp = 0;
    std::int16_t staff = 0;
    std::int16_t newStaff = 0;

    bool operator==(const Record&) const = default;
  };
  struct RecordHash {
    std::size_t operator()(const Record& record) const;
  };
  using Lists = SharedLists<Record, RecordHash>;
  struct System {
    double number = 0;
    std::uint32_t records = 0;  ///< one of the lists
    std::uint32_t file = 0;     ///< of the first record, a number in files
  };

  /// Null when there is no such system.
  const System* find(double number) const;
  /// The system, which is added when it is new.
  System& system(double number);
  /// The systems 1, 2, 3 ... up to the first number without a record; those beyond it are not converted.
  int systemCount() const;
  /// Of a page file of a record, the highest system that it serves.
  double lastUseOf(std::string_view file) const { return lastUse[files.find(file).value()]; }

  std::vector<System> systems;  ///< in the order in which they first appear
  HashIndex systemIndex;        ///< of systems, by number
  Lists lists;
  std::vector<std::string> unfitLines;
  std::vector<std::int16_t> instruments;  ///< the distinct identifiers, in order of first appearance
  NumberedTexts files;                    ///< the page files
  std::vector<double> lastUse;            ///< of each, the highest system that it serves
};

/// Adds the records of a report to an index.
class IndexReader {
 public:
  /// The index, which must outlive this, is cleared.
  explicit IndexReader(ReportIndex& report) : report_(report) { report = {}; }
  /// A record, or another line that is no comment. An identifier that 16 bits do not hold ends the program.
  void add(std::string_view record);

 private:
  ReportIndex& report_;
  std::unordered_set<std::int16_t> known_;  // identifiers
};

/// Reads the report. One that cannot be opened or read ends the program, and so does an identifier that 16 bits do not
/// hold.
ReportIndex readReport(Files& files);

/// The staves of a system in the order of the report, empty when it has none. A number that 16 bits do not hold ends
/// the program.
std::vector<StaffRecord> stavesOf(const ReportIndex& report, std::int16_t system);

}  // namespace kiv
