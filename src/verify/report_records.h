#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::proof {

/// A staff of a system, as the report lists it.
struct Record {
  int line = 0;  ///< its line in the report, counted from 1
  std::int16_t system = 0;
  std::int16_t instrument = 0;
  std::int16_t newStaff = 0;  ///< its number in the page
  std::int16_t staff = 0;     ///< its number in its file
  std::string file;
};

/// The records of a report in their order, and the errors in it.
struct Records {
  std::vector<Record> staves;
  std::vector<std::string> errors;  ///< lines that are neither records nor comments, as phrases
};

Records readRecords(std::string_view report);

}  // namespace kiv::proof
