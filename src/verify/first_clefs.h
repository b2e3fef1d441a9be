#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

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

/// Finds the first clef of every instrument in the order in which an analysis reads the pages: the files of one from
/// the last to the first.
class FirstClefsOfGroup {
 public:
  /// Adds the next page with its files. Nothing is added any more once an analysis ends at one.
  void addPage(const PageFiles& page, const LoadedPages& files);

  /// The file at which an analysis ends; "" when it reads them all.
  const std::string& endedBy() const { return endedBy_; }
  /// Of a group that no analysis can read to its end, the clefs up to there.
  FirstClefs take() && { return std::move(clefs_); }

 private:
  FirstClefs clefs_;
  std::string endedBy_;
};

}  // namespace kiv::proof
