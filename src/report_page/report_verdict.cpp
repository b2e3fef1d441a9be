#include "report_page/report_verdict.h"

#include <algorithm>

#include "diagnostics/verdict_words.h"
#include "messages/codes.h"

namespace kiv::report {
namespace {

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::size_t problemPlaces(const ReportData& data) {
  return placesOf(data, false);
}

/// Why the systems cannot be used as they are.
std::string differences(const ReportData& data) {
  std::string words;
  if (data.deviating > 0) {
    words = std::to_string(data.deviating) + " of " + counted(data.systems, "system", "systems") +
            (data.deviating == 1 ? " does" : " do") + " not have the commonest layout of instruments";
  }
  if (data.severalFiles > 0) {
    words += (words.empty() ? "" : ", and ") + counted(data.severalFiles, "page consists", "pages consist") +
             " of several files";
  }
  return words + ".";
}

const ReportPlace& firstSkipped(const ReportData& data) {
  return data.problems.front().places.front();
}

bool isDamage(const ReportProblem& problem) {
  return problem.text->code == code::structureError;
}

void addDamage(const ReportRequest& request, ReportData& data) {
  data.kind = VerdictKind::damaged;
  data.headline = unreadableWords(data.skipped);
  data.details = data.systems == 0
                     ? "No page could be analyzed."
                     : "The report is about the other pages: " + counted(data.systems, "system", "systems") +
                           ". Systems of the missing pages are not counted.";
  const ReportProblem& problem = data.problems.front();
  const std::string words = firstSkipped(data).words;
  if (isDamage(problem)) {
    data.next.words = "Save what the damaged page still holds (" + words + "), then make this report again.";
    const std::string& file = request.skipped.front().message.location.file;
    data.next.command = file.empty() ? "" : "kivsys recover " + request.argumentOf(file);
    data.next.panel = {"Restore the page from a backup; the window cannot repair it.", "Press Analyze again."};
  } else {
    data.next.words = std::string(problem.text->remedy) + " (" + words + ")";
    data.next.panel = {std::string(problem.text->remedy), "Press Analyze again."};
  }
}

void addProblems(const ReportRequest& request, ReportData& data) {
  const std::size_t count = problemPlaces(data);
  data.kind = VerdictKind::hasProblems;
  data.headline = problemWords(count);
  data.details = "Until then a conversion may mix up staves. " +
                 (data.deviating + data.severalFiles > 0 ? "Besides, " + differences(data)
                                                         : std::string("The systems have the same layout."));
  data.next.panel = {"Correct the places listed under Problems in the notation program, and save the pages.",
                     "Press Analyze again."};
  if (data.proposals.empty()) {
    data.next.words = "Correct the places listed under Problems, then make this report again.";
    data.next.command = "kivsys report -o report.html" + request.arguments;
    return;
  }
  data.next.words = "Tick the right ones of the " + counted(data.proposals.size(), "proposal", "proposals") +
                    " under Proposals, save them as corrections.csv, and write corrected copies of the pages:";
  data.next.command = "kivsys fix --corrections corrections.csv -o corrected" + request.arguments;
}

void addConversion(const ReportRequest& request, ReportData& data) {
  data.kind = VerdictKind::needsConversion;
  data.headline = needConversion;
  data.details = differences(data) + " A conversion writes one page for each system, all with the same instruments.";
  data.next.words = "Convert the pages. The results go into a new folder, the pages stay as they are.";
  data.next.command = "kivsys convert --result converted/WORK0001.MUS" + request.arguments;
  if (request.isForPanel) {
    data.next.panel = {
        "Press Convert in the KivSystem window. If it was closed meanwhile, select the pages and press Analyze "
        "before."};
  } else {
    data.next.panel = {"Select the pages and press Analyze.", "Press Convert."};
  }
}

void addEmpty(ReportData& data) {
  const std::string pages = data.pages == 1 ? "page" : "pages";
  data.kind = VerdictKind::hasProblems;
  data.headline = "There is no system on the " + pages;
  data.details = "No staff was found, so there is nothing to convert, and nothing that another program could use.";
  data.next.words = "Check whether this is the right selection: look at the " + pages + " in the notation program.";
  data.next.panel = {"Select other pages and press Analyze."};
}

void addUsable(ReportData& data) {
  data.kind = VerdictKind::usable;
  data.headline = canBeUsed;
  data.details = data.systems == 1
                     ? "There is one system."
                     : "All " + std::to_string(data.systems) + " systems have the same instruments in the same order.";
  data.next.words = "Continue with the program that needs the pages, such as KivSplit. Nothing has to be changed.";
  data.next.panel = {"Press Return to close the window.", "Continue with KivSplit or KivScore2XML."};
}

void addConverted(const ReportRequest& request, ReportData& data) {
  data.kind = VerdictKind::converted;
  data.headline = "The pages have been converted";
  data.details = "Below, each system is shown before and after the conversion. " +
                 (data.deviating + data.severalFiles > 0 ? "Before, " + differences(data) : std::string());
  if (const std::size_t warnings = placesOf(data, true); warnings > 0) {
    data.details += " " + counted(warnings, "warning is", "warnings are") + " listed under Problems.";
  }
  data.next.words = "Check that the conversion has lost and changed nothing.";
  data.next.command = "kivsys verify --result " + request.typedResult + request.arguments;
  data.next.panel = {"Open the results in the notation program, and compare them with the pictures below."};
}

}  // namespace

void addVerdict(const ReportRequest& request, ReportData& data) {
  data.next.isForPanel = request.isForPanel;
  if (data.skipped > 0) {
    addDamage(request, data);
  } else if (problemPlaces(data) > 0) {
    addProblems(request, data);
  } else if (data.systems == 0) {
    addEmpty(data);
  } else if (data.hasResults) {
    addConverted(request, data);
  } else if (data.deviating + data.severalFiles > 0) {
    addConversion(request, data);
  } else {
    addUsable(data);
  }
}

}  // namespace kiv::report
