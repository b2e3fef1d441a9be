#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/group_facts.h"

namespace kiv::report {

/// Finds the systems of a group by what problems say of them. Systems are indices of the facts.
class SystemFinder {
 public:
  /// The facts must outlive the finder.
  explicit SystemFinder(const GroupFacts& facts);

  /// The system with a number; nullopt when there is none.
  std::optional<std::size_t> withNumber(std::int16_t number) const;
  /// The system that a staff of a file is of; that of the only one of the file when it has no such staff, and nullopt
  /// when it is not known. To be asked file by file.
  std::optional<std::size_t> withStaff(const std::string& file, double staff);

 private:
  using Staff = std::pair<double, std::size_t>;  // its number in its file, and its system

  void findStaves(const std::string& file);

  const GroupFacts& facts_;
  std::vector<std::pair<std::int16_t, std::uint32_t>> numbers_;  // of the systems, in order
  std::vector<std::pair<std::uint32_t, std::uint32_t>> files_;   // with their systems, in order
  std::string file_;                                             // that was asked for last
  std::vector<Staff> staves_;                                    // of that file, as the systems have them
};

}  // namespace kiv::report
