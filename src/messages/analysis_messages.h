#pragma once

#include <string>
#include <vector>

#include "messages/message.h"

namespace kiv::messages {

// What an analysis finds on a page, and what keeps it from its end.

/// The page that a finding is about.
struct CheckedPage {
  bool multifile = false;
  std::string file;  ///< the top file of a multifile page
};

Message duplicateInstrumentIds(const CheckedPage& page, const std::string& identifiers);
Message duplicateStaffNumbers(const CheckedPage& page, const std::string& staves);
Message zeroInstrumentIds(const CheckedPage& page);
Message recursiveCues(const CheckedPage& page);
Message undefinedCues(const CheckedPage& page, const std::string& cues);

// Critical.
Message noSystemBarline(const std::string& topFile);
Message reportNotCreated(const std::string& reportFile);
/// Names as the procedures of an analysis, of the panel and of a conversion word it.
Message reportNotReadForVerdict();
Message reportNotReadForCount();
Message reportNotReadForConversion();
Message verdictNotCreated();
Message verdictNotRead();

/// The results of an analysis of input that does not qualify, as the panel shows them.
struct AnalysisResult {
  int files = 0;
  int instruments = 0;
  std::string consistency;  ///< the lines of the verdict
  std::string multifile;
};

Message qualifies();
Message analysisResult(const AnalysisResult& result);
/// Asks whether the conversion is to start.
Message convertNow();

}  // namespace kiv::messages
