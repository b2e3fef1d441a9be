#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::fuzz {

/// One record of a report.
struct Record {
  double system = 0;
  std::string instrument;  ///< as it stands there
  std::int16_t instrId = 0;
  std::int16_t staff = 0;
  std::int16_t newStaff = 0;
  std::string file;
};

/// The records of a report whose numbers are such that a conversion of it can end successfully.
std::vector<Record> recordsOf(std::string_view report);

/// The systems 1, 2, 3 ... up to the first without a record.
std::vector<std::vector<Record>> systemsOf(const std::vector<Record>& records);

}  // namespace kiv::fuzz
