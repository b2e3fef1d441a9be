#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "verify/page_files.h"
#include "verify/page_items.h"

namespace kiv::proof {

/// The first clef of an instrument.
struct FirstClef {
  float markedKind = 0;  ///< P5 + 1000 in single precision; 0 stands for no kind, and so does a P5 of -1000
  float height = 0;      ///< P4

  bool isKnown() const { return markedKind != 0; }
  /// P5 with what the sum has lost.
  float kind() const;

  bool operator==(const FirstClef&) const = default;
};

/// By instrument identifier.
using FirstClefs = std::map<std::int16_t, FirstClef>;

/// What a page file says about clefs.
struct StavesAndClefs {
  /// A staff or a clef by its parameters.
  struct Entry {
    bool isStaff = false;
    float staff = 0;
    float instrument = 0;  ///< of a staff
    float kind = 0;        ///< of a clef, as its height
    float height = 0;
  };
  std::vector<Entry> entries;  ///< the staves that are not hidden, and the clefs, in the order of the file
  bool isComplete = true;      ///< false when an error ends the file early
};

StavesAndClefs stavesAndClefsOf(const LoadedPage& page);

/// The first clefs of a group.
struct GroupClefs {
  FirstClefs clefs;
  std::string endedBy;  ///< the file at which an analysis ends; "" when it reads them all
};

/// The first clef of every instrument in the order in which an analysis reads the pages: the files of one from the
/// last to the first. Of a group that no analysis can read to its end, the clefs up to there. The files have all of
/// the pages.
GroupClefs firstClefsOf(const std::vector<PageFiles>& pages, const std::map<std::string, StavesAndClefs>& files);

}  // namespace kiv::proof
