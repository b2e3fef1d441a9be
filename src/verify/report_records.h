#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::proof {

/// A staff of a system, as the report lists it. There are very many of them, so they are small.
struct Record {
  std::int16_t system = 0;
  std::int16_t instrument = 0;
  std::int16_t newStaff = 0;          ///< its number in the page
  std::int16_t staff = 0;             ///< its number in its file
  const std::string* file = nullptr;  ///< its name, one of the records'
};

/// The records of a report in their order, and the errors in it.
struct Records {
  Records() = default;
  Records(const Records&) = delete;
  Records& operator=(const Records&) = delete;
  Records(Records&&) = default;
  Records& operator=(Records&&) = default;
  ~Records() = default;

  std::vector<Record> staves;
  std::set<std::string> files;      ///< those of the staves
  std::vector<std::string> errors;  ///< lines that are neither records nor comments, as phrases
};

/// Reads the records of a report that comes line by line.
class RecordReader {
 public:
  void addLine(std::string_view line);
  /// The records of all lines that were added.
  Records take() && { return std::move(records_); }

 private:
  Records records_;
  int lines_ = 0;  // that were added
};

}  // namespace kiv::proof
