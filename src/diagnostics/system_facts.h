#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace kiv {

/// A staff as its record in the report lists it; numbers that are texts are in general number form.
struct StaffFact {
  std::int16_t instrument = 0;
  std::string instrumentText;
  std::string newStaff;  ///< its number in the page
  std::string staff;     ///< its number in the file
  std::string file;      ///< full name
  int occurrence = 1;    ///< which one it is of the staves with this instrument and number in the file, from 1

  bool operator==(const StaffFact&) const = default;
};

/// A system of the report.
struct SystemFact {
  std::int16_t number = 0;
  std::vector<StaffFact> staves;  ///< from the top down

  bool operator==(const SystemFact&) const = default;
};

/// The full names of the files that have its staves.
std::set<std::string> filesOf(const SystemFact& system);

}  // namespace kiv
