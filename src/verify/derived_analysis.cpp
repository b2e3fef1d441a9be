#include "verify/derived_analysis.h"

#include "verify/derived_verdict.h"
#include "verify/numbers.h"
#include "verify/page_rows.h"
#include "verify/zones.h"

namespace kiv::proof {
namespace {

constexpr const char* lineEnd = "\r\n";
constexpr const char* separator =
    "* =======================================================================================\r\n";
constexpr const char* columnHeads =
    "* Nr          Par1          Staff         Cue/Id        System        Staves        Bottom        Filename\r\n";

/// The line of a row in the listing; "" for a row that has none.
std::string listingLine(Machine& machine, const PageRow& row, std::size_t index) {
  const Item& item = row.item;
  const bool isStaff = item.type() == ItemType::staff;
  const bool isBarline = item.type() == ItemType::barline;
  if (isBarline && item[par::mark] != 1) {
    return "";
  }
  std::vector<std::string> fields = {numberField(static_cast<float>(index)), numberField(item[par::type]),
                                     numberField(item[par::staff])};
  if (isStaff) {
    for (const int p : {par::instrument, par::system, par::stavesUp, par::mark}) {
      fields.push_back(numberField(item[p]));
    }
    fields.push_back(row.record);
  } else if (isBarline) {
    fields.insert(fields.end(), {numberField(item[par::spannedStaves]), "", "", numberField(item[par::mark])});
  } else {
    fields.push_back(numberField(item[par::cuedInstrument]));
  }
  return inZones(machine, fields) + lineEnd;
}

std::string recordLine(const PageRow& row) {
  return "SYSTEM=" + generalForm(row.item[par::system]) + ",INSTRID=" + generalForm(row.item[par::instrument]) +
         ",NEWSTAFF=" + generalForm(row.item[par::staff]) + ",STAVESUP=" + generalForm(row.item[par::stavesUp]) + "," +
         row.record + lineEnd;
}

std::string reportOfPage(Machine& machine, const std::vector<PageRow>& rows, DerivedVerdict& verdict) {
  std::string listing;
  std::string records;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    listing += listingLine(machine, rows[i], i + 1);
    if (rows[i].item.type() == ItemType::staff) {
      records += recordLine(rows[i]);
      verdict.addStaff(rows[i]);
    }
  }
  return columnHeads + listing + separator + records + separator;
}

}  // namespace

DerivedAnalysis deriveAnalysis(Machine& machine, const SelectedPages& pages, const FilesOfPage& filesOf,
                               const ReportSink& report) {
  DerivedAnalysis derived;
  DerivedVerdict verdict;
  report(std::string(headOfReport) + lineEnd);
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const PageFiles page = pages.page(i);
    report(inZones(machine, {page.name, page.letters, page.folder}) + lineEnd);
    verdict.addPage(page);
  }
  report(separator);
  std::int16_t base = 0;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    const PageFiles page = pages.page(i);
    PageRows rows = rowsOf(page, filesOf(page));
    if (!rows.failed()) {
      findSystems(page, base, rows);
    }
    if (rows.failed()) {
      derived.failure = rows.failure;
      return derived;
    }
    report(reportOfPage(machine, rows.rows, verdict));
  }
  derived.verdict = verdict.text();
  derived.failure = verdict.failure();
  return derived;
}

}  // namespace kiv::proof
