#pragma once

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

#include "diagnostics/page_staves.h"
#include "repair/layout_file.h"

namespace kiv {

/// What the staves of an instrument look like, as a table of instruments has it.
struct ListedLook {
  std::int16_t id = 0;
  std::optional<ClefForm> clef;
  std::optional<float> lines;
  std::optional<float> size;
  std::optional<float> key;  ///< the number of sharps; that of flats is negative

  bool operator==(const ListedLook&) const = default;
};

/// Reads the columns `clefs`, `lines`, `size` and `keys` of listed instruments: of several values, which a comma and a
/// blank separate, the first. A cell that is not as `kivsys instruments --csv` writes them is an error; an empty one is
/// not.
std::variant<std::vector<ListedLook>, LayoutFileError> looksOf(const std::vector<ListedInstrument>& instruments);

}  // namespace kiv
