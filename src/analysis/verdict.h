#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/shared_lists.h"
#include "platform/files.h"

namespace kiv {

inline const std::string verdictFile = "KivSystem1.TXT";

/// The systems of a report, in order of first appearance.
struct SystemTable {
  struct System {
    std::int16_t systemNumber = 0;
    std::uint32_t systemInstrList = 0;  ///< one of the lists
  };
  std::vector<System> systems;
  SharedLists<std::int16_t> lists;  ///< the identifiers from the top staff down
  std::size_t instrumentCount = 0;  ///< of the distinct identifiers, compared as texts

  std::size_t systemCount() const { return systems.size(); }
  /// True when every system lists the same identifiers in the same order.
  bool isConsistent() const;
};

/// Reads the report back into the table and writes the verdict. A file that cannot be opened ends the program, and so
/// does a line whose system or identifier is no number of 16 bits.
void phase5(Files& files, std::int16_t multifileCount, SystemTable& table);

/// The number of distinct instrument identifiers in the report of the last analysis, compared as texts. Without a
/// report the program ends, as it does after an I/O error.
std::int16_t numberOfInstruments(Files& files);

/// The two lines of the verdict file; a missing one is empty.
struct Verdict {
  std::string consistency;
  std::string multifile;

  /// Whether every system can be used as it is.
  bool qualifies() const { return consistency.ends_with("=YES") && multifile.ends_with("=NO"); }
  bool operator==(const Verdict&) const = default;
};

/// Reads the verdict file. One that cannot be read ends the program.
Verdict readVerdict(Files& files);

}  // namespace kiv
