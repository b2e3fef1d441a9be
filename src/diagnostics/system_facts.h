#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
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

/// Puts listed staves together to systems.
class SystemFacts {
 public:
  /// Adds a staff to a system, after those that were added before. Its occurrence is filled in.
  void add(std::int16_t system, StaffFact staff);
  /// The systems in the order in which they first appeared.
  std::vector<SystemFact> systems() && { return std::move(systems_); }
  /// Gives away the systems so far, of which no staff will be added any more.
  std::vector<SystemFact> takeSystems();
  /// Forgets the files so far, of which no staff will be added any more.
  void forgetFiles() { occurrences_.clear(); }

 private:
  std::vector<SystemFact> systems_;
  std::unordered_map<std::int16_t, std::size_t> indices_;  // by the number of the system
  std::unordered_map<std::string, std::size_t> files_;     // their numbers
  std::size_t lastFile_ = 0;
  std::string lastFileName_;
  std::unordered_map<std::string, int> occurrences_;  // of each staff, by its texts and the number of its file
};

/// The systems of the report in the current folder, in the order of the pages. Never ends the program: no report, or
/// an I/O error in it, gives no systems, and a record without whole numbers of 16 bits is skipped.
std::vector<SystemFact> readSystemFacts(Files& files);

/// Is given a system of the report.
using SystemFactVisitor = std::function<void(const SystemFact&)>;

/// Gives the same systems, one by one: only one is in memory at a time, if the staves of each system and those of each
/// file follow each other. False when an I/O error has ended the report; then those that were given do not count.
bool forEachSystemFact(Files& files, const SystemFactVisitor& visit);

}  // namespace kiv
