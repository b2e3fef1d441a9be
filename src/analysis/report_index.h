#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

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

/// The records of a report, read once: by system. There are very many, so each takes few bytes.
struct ReportIndex {
  /// A record. Its numbers are 0 when one of them does not fit.
  struct Record {
    const std::string* file = nullptr;  ///< a key of lastUse
    std::uint32_t next = 0;             ///< of the same system, an index in records; 0 for none
    std::int16_t instrId = 0;
    std::int16_t stavesUp = 0;
    std::int16_t staff = 0;
    std::int16_t newStaff = 0;
  };
  /// The records of a system: indices in records.
  struct Chain {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
  };

  ReportIndex() = default;
  ReportIndex(const ReportIndex&) = delete;
  ReportIndex& operator=(const ReportIndex&) = delete;
  ReportIndex(ReportIndex&&) = default;
  ReportIndex& operator=(ReportIndex&&) = default;
  ~ReportIndex() = default;

  std::map<double, Chain> systems;  ///< in the order of the report
  std::deque<Record> records;
  std::map<std::uint32_t, std::string> unfitLines;     ///< of the records with a number that 16 bits do not hold
  std::vector<std::int16_t> instruments;               ///< the distinct identifiers, in order of first appearance
  std::map<std::string, double, std::less<>> lastUse;  ///< of each page file, the highest system that it serves

  /// The systems 1, 2, 3 ... up to the first number without a record; those beyond it are not converted.
  int systemCount() const;
};

/// Reads the report. One that cannot be opened or read ends the program, and so does an identifier that 16 bits do not
/// hold.
ReportIndex readReport(Files& files);

/// The staves of a system in the order of the report, empty when it has none. A number that 16 bits do not hold ends
/// the program.
std::vector<StaffRecord> stavesOf(const ReportIndex& report, std::int16_t system);

}  // namespace kiv
