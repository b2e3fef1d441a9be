#pragma once

#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "repair/group_evidence.h"

namespace kiv {

/// What the items of a page file say about the staves with one number.
struct StaffSigns {
  std::optional<float> brace;
  std::optional<float> noteHeight;
  std::optional<float> shownNumber;
  std::vector<CueEvidence> cues;
};

/// The signs of the staves of a page file by their numbers, as far as its bytes can be read.
std::map<float, StaffSigns> findSigns(std::string_view file);

}  // namespace kiv
