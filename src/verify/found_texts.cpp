#include "verify/found_texts.h"

#include "base/sha256.h"

namespace kiv::proof {
namespace {

constexpr const char* verdictName = "KivSystem1.TXT";

}  // namespace

FoundTexts::FoundTexts(Files& files)
    : report_(files, reportName), verdict_(readBounded(files, verdictName, most_bytes::verdict)) {}

void FoundTexts::finish() {
  comparison_.finish();
  if (const std::string error = report_.error(); error.empty()) {
    digests_.push_back({reportName, report_.hexDigest()});
  } else {
    unreadable_.push_back({reportName, 0, error});
  }
  if (verdict_.bytes) {
    digests_.push_back({verdictName, sha256(*verdict_.bytes)});
  } else {
    unreadable_.push_back({verdictName, 0, whyUnreadable(verdict_.isTooLarge, most_bytes::verdict)});
  }
}

std::vector<Finding> FoundTexts::differences(std::string_view derivedVerdict) const {
  std::vector<Finding> ofReport;
  if (report_.error().empty()) {
    ofReport = comparison_.findings(reportName);
  }
  return ofReport.empty() && verdict_.bytes ? compareVerdict(verdictName, *verdict_.bytes, derivedVerdict) : ofReport;
}

}  // namespace kiv::proof
