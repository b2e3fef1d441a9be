#pragma once

#include <cstdint>
#include <string>

#include "analysis/analysis_observer.h"
#include "analysis/first_clef_table.h"
#include "mus/item_table.h"
#include "mus/reader.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/user.h"

namespace kiv {

/// Reads of page files what an analysis looks at.
class BarDataReader {
 public:
  /// The observer, if any, is given all that is read.
  BarDataReader(Files& files, User& user, Machine& machine, AnalysisObserver* observer = nullptr)
      : files_(files), user_(user), machine_(machine), observer_(observer) {}

  /// Appends the staves, barlines and cue markers of a page file to the table, their staff numbers raised by the
  /// offset, and enters its clefs in the first-clef table. The text of a staff becomes the end of its report record,
  /// with the staff number that it has in the file. A missing or broken file ends the program; so does a staff whose
  /// raised number 16 bits do not hold.
  void readBarData(const std::string& musFileName, std::int16_t staffOffset, ItemTable& table,
                   FirstClefTable& firstClefs);

 private:
  Files& files_;
  User& user_;
  Machine& machine_;
  AnalysisObserver* observer_;
  MusReader reader_;
};

}  // namespace kiv
