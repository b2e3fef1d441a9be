#include "verify/input_files.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace kiv::proof {

bool FileFacts::note(std::string_view bytes) {
  const std::size_t found = std::hash<std::string_view>()(bytes);
  if (isRead) {
    return found == hash;
  }
  isRead = true;
  hash = found;
  if (!bytes.empty()) {
    digest = sha256Digest(bytes);
  }
  return true;
}

std::ptrdiff_t InputFacts::numbersOn(float staff) const {
  const auto [begin, end] = std::equal_range(numberStaves.begin(), numberStaves.end(), staff);
  return end - begin;
}

InputFiles::InputFiles(std::vector<std::string> names) : names_(std::move(names)), sorted_(names_.size()) {
  std::iota(sorted_.begin(), sorted_.end(), 0U);
  std::sort(sorted_.begin(), sorted_.end(), [&](std::uint32_t a, std::uint32_t b) { return names_[a] < names_[b]; });
  const auto isSame = [&](std::uint32_t a, std::uint32_t b) { return names_[a] == names_[b]; };
  sorted_.erase(std::unique(sorted_.begin(), sorted_.end(), isSame), sorted_.end());
  facts_.resize(sorted_.size());
}

std::optional<std::size_t> InputFiles::find(std::string_view name) const {
  const auto found =
      std::lower_bound(sorted_.begin(), sorted_.end(), name,
                       [&](std::uint32_t index, std::string_view other) { return names_[index] < other; });
  return found != sorted_.end() && names_[*found] == name
             ? std::optional(static_cast<std::size_t>(found - sorted_.begin()))
             : std::nullopt;
}

}  // namespace kiv::proof
