#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "verify/input_files.h"

namespace kiv::proof {

/// A staff of a system, as the report lists it. There are very many of them, so they are small.
struct Record {
  std::int16_t system = 0;
  std::int16_t instrument = 0;
  std::int16_t newStaff = 0;  ///< its number in the page
  std::int16_t staff = 0;     ///< its number in its file
  std::uint16_t file = 0;     ///< that of an input, or of another file after them; there are fewer than 16 bits count
};

/// The records of a report in their order, and the errors in it.
class Records {
 public:
  explicit Records(const InputFiles& inputs) : inputs_(inputs) {}

  /// Reads the next line of the report.
  void addLine(std::string_view line);

  const std::vector<Record>& staves() const { return staves_; }
  /// Sorts the records by their systems; those of one keep their order.
  void sortBySystem();
  /// The full name of the file of a record, which is no input if its name was not read to its end.
  const std::string& fileOf(const Record& record) const;
  bool isOfInput(const Record& record) const { return record.file < inputs_.size(); }
  /// The index in the records of each that lists a staff of a file once more.
  std::vector<std::size_t> repeated() const;
  /// Lines that are neither records nor comments, as phrases.
  const std::vector<std::string>& errors() const { return errors_; }

 private:
  std::uint16_t indexOf(std::string_view file);

  const InputFiles& inputs_;
  std::vector<Record> staves_;
  std::map<std::string, std::uint16_t, std::less<>> others_;  // files that are no inputs
  std::vector<std::string> otherNames_;
  std::vector<std::string> errors_;
  int lines_ = 0;  // that were added
};

}  // namespace kiv::proof
