#include "report_page/report_page.h"

#include "drawing/svg.h"
#include "report_page/page_template.h"
#include "report_page/report_blocks.h"
#include "report_page/report_json.h"

namespace kiv::report {
namespace {

const char* classOf(VerdictKind kind) {
  switch (kind) {
    case VerdictKind::usable:
      return "usable";
    case VerdictKind::needsConversion:
      return "needs-conversion";
    case VerdictKind::hasProblems:
      return "has-problems";
    case VerdictKind::damaged:
      return "damaged";
    case VerdictKind::unfitResults:
      return "unfit-results";
    case VerdictKind::converted:
      break;
  }
  return "converted";
}

std::string stateTag(const ReportData& data) {
  return data.state.empty() ? "" : R"(  <meta name="pages-state" content=")" + data.state + "\">\n";
}

std::string hiddenUnless(bool shown) {
  return shown ? "" : " hidden";
}

}  // namespace

std::string reportPage(const ReportData& data) {
  const std::string undecided =
      data.undecided == 0
          ? ""
          : element("p", std::to_string(data.undecided) + " more wrong ids stay undecided; kivsys suggest lists them.");
  return completePage(PageKind::report,
                      {{"title", svgText(data.title)},
                       {"made", svgText(data.made)},
                       {"state", stateTag(data)},
                       {"verdict-class", classOf(data.kind)},
                       {"headline", svgText(data.headline)},
                       {"details", svgText(data.details)},
                       {"counts", countsBlock(data)},
                       {"next", nextStepBlock(data)},
                       {"layouts", layoutRows(data)},
                       {"problems", problemsBlock(data)},
                       {"instruments", instrumentRows(data)},
                       {"proposals", proposalRows(data)},
                       {"undecided", undecided},
                       {"proposals-hidden", hiddenUnless(!data.proposals.empty())},
                       {"systems-hidden", hiddenUnless(data.systems > 0)},
                       {"systems-without-script", systemsWithoutScript(data)},
                       {"data", TemplateContent([&](std::string& page) { addReportJson(data, page); })}});
}

}  // namespace kiv::report
