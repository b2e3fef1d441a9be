#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/listed_staff.h"

namespace kiv {

/// A clef by its kind (0 treble, 1 bass, 2 alto) and how many staff steps it is above its normal line.
struct ClefForm {
  float kind = 0;
  float height = 0;

  bool operator==(const ClefForm&) const = default;
};

/// A staff that an analysis sees, and what a page file says about its instrument.
struct DescribedStaff : ListedStaff {
  float lines = 0;
  float size = 0;
  std::vector<ClefForm> clefs;  ///< from left to right as the file has them, each once, as those below
  std::vector<float> keys;      ///< numbers of sharps; those of flats are negative
  std::vector<float> cued;      ///< the instruments that its cue markers refer to
  // The texts left of the staff, as one line; "" when there are none with a letter.
  std::string beside;
  std::string above;  ///< further up than the staff itself
  std::string below;  ///< further down
};

/// The staves of a page file, as far as its bytes can be read, those of one number from left to right. Texts and signs
/// of hidden staves are left out. Of very many different clefs, keys or cues only the first hundred are kept.
std::vector<DescribedStaff> describeStaves(std::string_view file);

}  // namespace kiv
