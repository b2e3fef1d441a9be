#include "report_page/system_finder.h"

#include <algorithm>

#include "base/number.h"

namespace kiv::report {

SystemFinder::SystemFinder(const GroupFacts& facts) : facts_(facts) {
  for (std::size_t s = 0; s < facts.systemCount(); ++s) {
    const auto system = static_cast<std::uint32_t>(s);
    numbers_.emplace_back(facts.systemNumber(s), system);
    for (const SystemRow& row : facts.rows(s)) {
      if (files_.empty() || files_.back() != std::pair(row.fileNumber, system)) {
        files_.emplace_back(row.fileNumber, system);
      }
    }
  }
  std::sort(numbers_.begin(), numbers_.end());
  std::sort(files_.begin(), files_.end());
  files_.erase(std::unique(files_.begin(), files_.end()), files_.end());
}

std::optional<std::size_t> SystemFinder::withNumber(std::int16_t number) const {
  const auto found = std::lower_bound(numbers_.begin(), numbers_.end(), std::pair(number, std::uint32_t{0}));
  return found == numbers_.end() || found->first != number ? std::nullopt : std::optional<std::size_t>(found->second);
}

void SystemFinder::findStaves(const std::string& file) {
  file_ = file;
  staves_.clear();
  const auto number = facts_.fileNumber(file);
  if (!number) {
    return;
  }
  for (auto of = std::lower_bound(files_.begin(), files_.end(), std::pair(*number, std::uint32_t{0}));
       of != files_.end() && of->first == *number; ++of) {
    for (const StaffFact& staff : facts_.system(of->second).staves) {
      if (staff.file == file) {
        staves_.emplace_back(numericValue(staff.staff), of->second);
      }
    }
  }
}

std::optional<std::size_t> SystemFinder::withStaff(const std::string& file, double staff) {
  if (file != file_) {
    findStaves(file);
  }
  if (staves_.empty()) {
    return std::nullopt;
  }
  const auto found =
      std::find_if(staves_.begin(), staves_.end(), [&](const Staff& known) { return known.first == staff; });
  if (found != staves_.end()) {
    return found->second;
  }
  const std::size_t first = staves_.front().second;
  const bool isOnlyOne =
      std::all_of(staves_.begin(), staves_.end(), [&](const Staff& known) { return known.second == first; });
  return isOnlyOne ? std::optional(first) : std::nullopt;
}

}  // namespace kiv::report
