#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"

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

/// Is given a system of the report.
using SystemFactVisitor = std::function<void(const SystemFact&)>;

/// Gives the systems of the report in the current folder, in the order of the pages: only one is in memory at a time,
/// if the staves of each system and those of each file follow each other. Never ends the program: no report gives no
/// systems, and a record without whole numbers of 16 bits is skipped. False when an I/O error has ended the report;
/// then those that were given do not count.
bool forEachSystemFact(Files& files, const SystemFactVisitor& visit);

}  // namespace kiv
