#include "report_page/report_proposals.h"

#include "base/number.h"
#include "report_page/report_problems.h"

namespace kiv::report {

void addProposals(const ReportHost& host, const CsvWriter& csv, const Suggestions& suggestions, ReportData& data) {
  for (const Correction& correction : suggestions.corrections) {
    const DoubtfulId& at = correction.at;
    ReportProposal proposal;
    proposal.file = at.file;
    proposal.staff = static_cast<float>(numericValue(at.staff));
    proposal.item = at.isCue ? at.item : 0;
    proposal.words = placeWords(host.nameOf(at.file), at.staff, proposal.item);
    proposal.label = std::to_string(at.oldId) + " \xE2\x86\x92 " + std::to_string(correction.newId);
    proposal.confidence = nameOf(correction.confidence);
    proposal.reason = host.shown(correction.reason);
    proposal.csvLine = csv.line(correction);
    proposal.isAccepted = correction.confidence == Confidence::sure;
    data.proposals.push_back(std::move(proposal));
  }
  data.undecided = suggestions.undecided.size();
}

}  // namespace kiv::report
