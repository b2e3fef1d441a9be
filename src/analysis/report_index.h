#pragma once

#include <cstdint>
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

/// The records of a report, read once: its lines by system.
struct ReportIndex {
  std::map<double, std::vector<std::string>> systems;  ///< the lines of each system, in the order of the report
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
