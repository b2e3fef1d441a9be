#include "report_page/report_verdict.h"

#include <algorithm>

#include "base/counted.h"
#include "diagnostics/verdict_words.h"
#include "messages/page_messages.h"

namespace kiv::report {
namespace {

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

/// The command line of a command with these parts, on which the pages follow, and then an option that could take them
/// for its own; "" when no other run can read the same pages, or a name cannot be shown.
std::string commandLine(const ReportRequest& request, const std::string& command, const std::string& lastOption = "") {
  const CommandParts& parts = request.commands;
  const std::string line = parts.pages ? "kivsys " + command + *parts.pages + lastOption : "";
  return parts.shown && !line.empty() ? parts.shown(line) : line;
}

/// The option for the table of corrections where it makes a difference.
std::string tableOption(const ReportRequest& request, const ReportData& data) {
  return data.corrected ? request.commands.table : "";
}

std::string convertLine(const ReportRequest& request, const ReportData& data, const std::string& option = "") {
  const CommandParts& parts = request.commands;
  return commandLine(request, "convert" + option + parts.newResult + parts.zeroIds, tableOption(request, data));
}

/// " with the corrections of mine.csv", where there are some.
std::string withTable(const ReportData& data) {
  return data.corrected ? " with the corrections of " + data.corrected->table : "";
}

/// A sentence for each, or for some and the number of the others.
std::string misfitWords(const ReportData& data) {
  constexpr std::size_t mostNamed = 4;
  std::string words;
  const std::size_t named = std::min(data.misfits.size(), mostNamed);
  for (std::size_t m = 0; m < named; ++m) {
    words += " " + data.misfits[m];
  }
  const std::size_t others = data.misfits.size() - named;
  return words + (others == 0 ? "" : " " + counted(others, "more result does", "more results do") + " not fit.");
}

/// Why results that were named are not shown, after a blank; "" when they are shown.
std::string unshownResults(const ReportRequest& request, const ReportData& data) {
  if (request.firstResult.empty() || data.hasResults) {
    return "";
  }
  if (data.skipped > 0) {
    return " The results of the conversion are not shown: without the pages left out it is not known which result "
           "belongs to which system.";
  }
  return " The results of the conversion are not shown, as they do not fit the pages:" + misfitWords(data);
}

/// What to do about a page that cannot be read.
void addPageStep(const ReportRequest& request, const ReportProblem& problem, NextStep& next) {
  const PageStep step = request.stepAfter ? request.stepAfter(request.skipped.front()) : PageStep{};
  const std::string& place = problem.places.front().words;
  next.command = step.command;
  if (!step.mistaken.empty()) {
    next.words = place + ".";
    next.panel = {"Select the pages themselves.", "Press Analyze again."};
  } else if (messages::isDamage(request.skipped.front().message)) {
    next.words = "Save what the damaged page still holds (" + place + "), then make this report again.";
    next.panel = {"Restore the page from a backup; the window cannot repair it.", "Press Analyze again."};
  } else {
    next.words = std::string(problem.text->remedy) + " (" + place + ")";
    next.panel = {std::string(problem.text->remedy), "Press Analyze again."};
  }
}

void addDamage(const ReportRequest& request, ReportData& data) {
  data.kind = VerdictKind::damaged;
  data.headline = unreadableWords(data.skipped);
  data.details = data.systems == 0
                     ? "No page could be analyzed."
                     : "The report is about the other pages: " + counted(data.systems, "system", "systems") +
                           ". Systems of the missing pages are not counted.";
  data.details += unshownResults(request, data);
  if (!data.proposals.empty() && !request.table) {
    data.next.withoutScript = commandLine(request, "suggest --keep-going -o corrections.csv");
  }
  addPageStep(request, data.problems.front(), data.next);
}

/// Corrects the pages with the reader's table.
void addFix(const ReportRequest& request, ReportData& data) {
  const std::size_t left = data.corrected->problems;
  data.next.command = commandLine(request, "fix" + request.commands.table + " -o " + request.commands.newFolder);
  data.next.words = "Write corrected copies of the pages" + withTable(data) + "." +
                    (left == 0 ? std::string() : " They leave " + counted(left, "problem", "problems") + ".") +
                    " To use only some of them, tick these under Proposals, save them as corrections.csv, and name "
                    "that table instead.";
}

void addProblems(const ReportRequest& request, ReportData& data) {
  const std::size_t count = problemPlaces(data);
  data.kind = VerdictKind::hasProblems;
  data.headline = problemWords(count);
  data.details = "Until then a conversion may mix up staves. " +
                 (data.deviating + data.severalFiles > 0 ? "Besides, " + differences(data)
                                                         : std::string("The systems have the same layout.")) +
                 unshownResults(request, data);
  data.next.panel = {"Correct the places listed under Problems in the notation program, and save the pages.",
                     "Press Analyze again."};
  if (data.corrected) {
    addFix(request, data);
    return;
  }
  if (data.proposals.empty()) {
    data.next.words = "Correct the places listed under Problems, then make this report again.";
    data.next.command = commandLine(request, "report" + request.commands.report);
    return;
  }
  data.next.command = commandLine(request, "fix --corrections corrections.csv -o " + request.commands.newFolder);
  data.next.withoutScript = commandLine(request, "suggest -o corrections.csv");
  const std::size_t proposals = data.proposals.size();
  data.next.words = (proposals == 1 ? "If the proposal under Proposals is right, tick it, save it as corrections.csv,"
                                    : "Tick the right ones of the " + std::to_string(proposals) +
                                          " proposals under Proposals, save them as corrections.csv,") +
                    std::string(" and write corrected copies of the pages") +
                    (data.next.command.empty() ? " with kivsys fix." : ":");
}

void addConversion(const ReportRequest& request, ReportData& data) {
  data.kind = VerdictKind::needsConversion;
  data.headline = needConversion;
  data.details = differences(data) + " A conversion writes one page for each system, all with the same instruments.";
  data.next.words =
      "Convert the pages" + withTable(data) + ". The results go into a new folder, the pages stay as they are.";
  data.next.command = convertLine(request, data);
  if (request.isForPanel) {
    data.next.panel = {
        "Press Convert in the KivSystem window. If it was closed meanwhile, select the pages and press Analyze "
        "before."};
  } else {
    data.next.panel = {"Select the pages and press Analyze.", "Press Convert."};
  }
}

/// Nothing is a problem, and the reader's table still changes ids.
void addCorrection(const ReportRequest& request, ReportData& data) {
  const bool areAlike = data.deviating + data.severalFiles == 0;
  const std::string asTheyAre = areAlike ? "As they are, the pages have the same instruments in all systems."
                                         : "As they are, " + differences(data);
  data.kind = data.corrected->problems > 0 ? VerdictKind::hasProblems : VerdictKind::needsConversion;
  data.headline = "The pages are to be corrected" + std::string(data.corrected->needConversion ? " and converted" : "");
  data.details = asTheyAre + " The corrections of " + data.corrected->table + " have not been made yet.";
  if (data.corrected->needConversion && data.corrected->problems == 0) {
    const std::string details = data.details;
    const std::string headline = data.headline;
    addConversion(request, data);
    data.details = details;
    data.headline = headline;
  } else {
    addFix(request, data);
  }
  data.next.panel = {"Correct the ids listed under Proposals in the notation program, and save the pages.",
                     "Press Analyze again."};
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
  const bool areCorrected = data.corrected && data.corrected->haveResults;
  if (areCorrected) {
    data.details += " The results are those of the pages" + withTable(data) + ".";
  } else if (data.corrected) {
    data.details += " The results are those of the pages without the corrections of " + data.corrected->table + ".";
  }
  data.details += problemPlaces(data) > 0 ? " The problems listed below are those before the corrections." : "";
  if (const std::size_t warnings = placesOf(data, true); warnings > 0) {
    data.details += " " + counted(warnings, "warning is", "warnings are") + " listed under Problems.";
  }
  data.next.words =
      "Check that the conversion has lost and changed nothing, with the options that it had, such as --fit.";
  const std::string table = areCorrected ? request.commands.table : "";
  data.next.command = commandLine(request, "verify" + request.commands.result, table);
  data.next.panel = {"Open the results in the notation program, and compare them with the pictures below."};
}

/// The results are not those of the pages.
void addUnfitResults(const ReportRequest& request, ReportData& data) {
  const bool needsThem = data.deviating + data.severalFiles > 0;
  data.kind = VerdictKind::unfitResults;
  data.headline = "The results do not fit the pages";
  data.details = "So they are not shown." + misfitWords(data);
  if (data.firstMissing > 1) {
    data.next.words = "The conversion has ended before system " + std::to_string(data.firstMissing) +
                      ". Convert the pages again, with rest staves that fit the music:";
    data.next.command = convertLine(request, data, " --fit");
  } else if (needsThem) {
    data.next.words = "Check whether these are the right pages and results. If they are, convert the pages again.";
    data.next.command = convertLine(request, data);
  } else {
    data.next.words =
        "Check whether these are the right pages and results. The pages can be used without a conversion.";
  }
  data.next.panel = {"Select all pages of the group and press Analyze.", "Press Convert."};
}

/// Whether the results are those of pages without the problems.
bool areProblemsCorrected(const ReportData& data) {
  return data.hasResults && data.corrected && data.corrected->haveResults && data.corrected->problems == 0;
}

}  // namespace

void addVerdict(const ReportRequest& request, ReportData& data) {
  data.next.isForPanel = request.isForPanel;
  if (data.skipped > 0) {
    addDamage(request, data);
  } else if (problemPlaces(data) > 0 && !areProblemsCorrected(data)) {
    addProblems(request, data);
  } else if (data.systems == 0) {
    addEmpty(data);
  } else if (!data.misfits.empty()) {
    addUnfitResults(request, data);
  } else if (data.hasResults) {
    addConverted(request, data);
  } else if (data.corrected) {
    addCorrection(request, data);
  } else if (data.deviating + data.severalFiles > 0) {
    addConversion(request, data);
  } else {
    addUsable(data);
  }
}

}  // namespace kiv::report
