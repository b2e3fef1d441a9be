#include "apps/kivsys/output/proof_step.h"

#include <algorithm>
#include <string_view>

#include "apps/kivsys/output/next_step.h"
#include "base/counted.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"

namespace kiv {
namespace {

constexpr std::string_view report = "KivSystem2.TXT";
constexpr std::string_view otherPages = "is the report of other pages";
constexpr std::string_view structure = "has a structural error";
constexpr std::string_view parameters = "has too many parameters";

bool isUnreadable(const proof::Finding& finding) {
  return finding.what.starts_with("cannot be read");
}

/// The page of the selection that is damaged; "" when none is.
std::string damagedPage(const proof::Verification& verification, const std::vector<FoundFile>& pages) {
  const auto isIt = [&](const proof::Finding& finding) {
    const bool isPage =
        std::any_of(pages.begin(), pages.end(), [&](const FoundFile& page) { return page.name == finding.file; });
    return isPage && (finding.what.starts_with(structure) || finding.what.starts_with(parameters));
  };
  const auto found = std::find_if(verification.findings.begin(), verification.findings.end(), isIt);
  return found == verification.findings.end() ? "" : found->file;
}

/// What is wrong with the report as a whole; "" when it is that of the pages.
std::string reasonOfReport(const proof::Verification& verification) {
  for (const proof::Finding& finding : verification.findings) {
    if (finding.file == report && isUnreadable(finding)) {
      return "the report is missing, so there is nothing to compare the results with: " + finding.file;
    }
    if (finding.file == report && finding.what.starts_with(otherPages)) {
      return "the report is of other pages, or of these before they were changed: " + finding.file;
    }
  }
  return "";
}

/// The options that a conversion may have had and this run has not, in words; "" when there are none.
std::string otherOptions(const TypedProof& typed) {
  std::vector<std::string> options;
  if (!typed.fit && typed.selection.layout.empty()) {
    options.insert(options.end(), {"--fit", "--layout"});
  }
  if (typed.selection.corrections.files.empty()) {
    options.emplace_back("--corrections");
  }
  std::string words;
  for (std::size_t i = 0; i < options.size(); ++i) {
    words += (i == 0 ? "" : i + 1 == options.size() ? " or " : ", ") + options[i];
  }
  return words;
}

/// What to do with results that are there and deviate: nothing replaces them.
std::string noteOnOptions(const TypedProof& typed) {
  const std::string other = otherOptions(typed);
  const bool isGiven = typed.fit || !typed.selection.layout.empty() || !typed.selection.corrections.files.empty();
  return std::string("kivsys: note: verify needs the options of the conversion: ") +
         (other.empty() ? "" : "add " + other + " if it had them") +
         (isGiven ? std::string(other.empty() ? "" : ", and ") + "leave out those that it did not have" : "") + "\n";
}

}  // namespace

ProofStep stepForProof(const proof::Verification& verification, const TypedProof& typed) {
  const std::size_t count = verification.findings.size();
  const std::string report = reasonOfReport(verification);
  ProofStep step;
  step.reason = "not proved: " + (report.empty() ? counted(count, "finding") : report);
  const std::string page = damagedPage(verification, typed.pages);
  if (!page.empty()) {
    step.next = "kivsys recover " + fileWord(typed.nameOf(page));
  } else if (report.empty() && typed.hasResults) {
    step.note = noteOnOptions(typed);
  } else if (canRepeat(typed.selection)) {
    step.next = "kivsys convert" + selectionArguments(typed.selection) +
                (typed.selection.layout.empty() ? "" : " --layout " + fileWord(typed.selection.layout)) +
                (typed.fit ? " --fit" : "") + typed.newResult + " --verify";
  }
  return step;
}

}  // namespace kiv
