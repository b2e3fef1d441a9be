#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::repair {

/// A correction of one id, as a table of corrections has it.
struct Correction {
  std::size_t line = 0;   ///< in the table, from 1
  std::string file;       ///< as written
  bool isCue = false;     ///< the id is that of a cue marker, not of a staff
  float staff = 0;        ///< P2 of the item
  std::int16_t item = 0;  ///< its number in the file, from 1; 0 when the table does not have it
  std::optional<float> oldId;
  std::int16_t newId = 0;
  std::string confidence;  ///< "sure", "likely", "guess" or ""

  bool operator==(const Correction&) const = default;
};

/// What is wrong with a line of the table.
struct CorrectionError {
  std::size_t line = 0;
  std::string reason;

  bool operator==(const CorrectionError&) const = default;
};

struct Corrections {
  std::vector<Correction> rows;
  std::size_t undecided = 0;            ///< rows without a new id, which are left out
  std::vector<CorrectionError> errors;  ///< in the order of the lines
};

/// Reads a table of corrections: comma-separated values whose first row names the columns, in any order. It must have
/// `file`, `staff` and `new_id`; `what` (staff or cue; staff without that column), `item`, `old_id` and `confidence`
/// are read, too, and others ignored. A row must reach as far as `new_id`. A cue needs its item. Heads and words may be
/// written in either case. At most 250000 rows are read, and none after 1000 errors.
Corrections readCorrections(std::string_view csv);

/// The id that the text is: a whole number from 1 to 32767.
std::optional<std::int16_t> idIn(std::string_view text);

}  // namespace kiv::repair
