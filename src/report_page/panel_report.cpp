#include "report_page/panel_report.h"

#include <set>
#include <utility>

#include "base/number.h"
#include "input/file_names.h"
#include "messages/page_messages.h"
#include "platform/memory/overlay_files.h"
#include "report_page/page_pattern.h"

namespace kiv::report {
namespace {

/// Stands for no file: the group of the names file may be another one by now.
constexpr const char* namesFile = "\\names of the analyzed group";

std::string namesOf(const AnalyzedGroup& group) {
  std::string lines;
  for (const std::string& file : group.files) {
    lines += file + " 1\r\n";
  }
  return lines;
}

/// Whether the files are in the order of their numbers and page letters, in which the console program takes them.
bool isInNaturalOrder(Machine& machine, const std::vector<std::string>& files) {
  std::pair<double, std::string> last;
  for (const std::string& file : files) {
    std::pair<double, std::string> place{numericValue(extractPartNumb(machine, file)), extractPartPage(machine, file)};
    if (place < last) {
      return false;
    }
    last = std::move(place);
  }
  return true;
}

/// What selects the pages on a command line: a pattern, or where none stands for them alone, their names.
std::string argumentsOf(const ReportHost& host, const AnalyzedGroup& group, const CommandWord& word) {
  constexpr std::size_t mostNamed = 4;
  std::set<std::string> files(group.files.begin(), group.files.end());
  const bool isInOrder = isInNaturalOrder(host.machine, group.files);
  if (isInOrder && files.size() > mostNamed) {
    const std::string folder = justPath(host.machine, group.files.front());
    std::vector<std::string> names;
    names.reserve(files.size());
    for (const std::string& file : files) {
      names.push_back(withoutPath(host.machine, file));
    }
    std::vector<std::string> others;
    for (const FolderEntry& entry : host.files.listFolder(folder)) {
      others.push_back(host.machine.upperCase(entry.name));
    }
    if (const auto pattern = patternFor(names, others)) {
      return " " + word(folder + *pattern);
    }
  }
  std::string arguments = isInOrder ? "" : " --keep-order";
  for (const std::string& file : group.files) {
    arguments += " " + word(file);
  }
  return arguments;
}

/// A folder beside the first page that is not there yet: the stem itself, or followed by a number.
std::string newFolder(const ReportHost& host, const AnalyzedGroup& group, const std::string& stem) {
  const std::string folder = justPath(host.machine, group.files.front());
  std::set<std::string> known;
  for (const FolderEntry& entry : host.files.listFolder(folder)) {
    known.insert(host.machine.upperCase(entry.name));
  }
  std::string name = stem;
  for (int number = 2; known.contains(host.machine.upperCase(name)); ++number) {
    name = stem + std::to_string(number);
  }
  return folder + name;
}

CommandParts commandsFor(const ReportHost& host, const AnalyzedGroup& group, const std::string& firstResult,
                         const CommandWord& word) {
  CommandParts parts;
  parts.pages = argumentsOf(host, group, word);
  parts.zeroIds = group.allowZeroInstrId ? " --allow-zero-id" : "";
  parts.newResult = " --result " + word(newFolder(host, group, "converted") + "\\WORK0001.MUS");
  parts.newFolder = word(newFolder(host, group, "corrected"));
  parts.result = " --result " + word(firstResult);
  parts.report = " -o report.html" + parts.zeroIds;
  return parts;
}

/// The full name of the first result, "" when it is not there.
std::string firstResultOf(const ReportHost& host, const AnalyzedGroup& group) {
  constexpr std::string_view suffix = ".MUS";
  if (group.firstResult.size() < suffix.size()) {
    return "";
  }
  const std::string stem = group.firstResult.substr(0, group.firstResult.size() - suffix.size());
  const std::string first = resultName(stem + std::string(suffix), 1);
  return host.files.openInput(first) ? first : "";
}

}  // namespace

GatheredReport panelReport(const ReportHost& host, const AnalyzedGroup& group, const CommandWord& word,
                           const CsvWriter& csv) {
  OverlayFiles files(host.files, host.machine);
  files.addFile(namesFile, namesOf(group));
  ReportRequest request;
  request.namesFile = namesFile;
  request.allowZeroId = group.allowZeroInstrId;
  request.isForPanel = true;
  request.firstResult = firstResultOf(host, group);
  request.commands = commandsFor(host, group, request.firstResult, word);
  request.stepAfter = [&](const SkippedPage& page) {
    return PageStep{messages::isDamage(page.message) ? "kivsys recover " + word(page.namedFile()) : "", ""};
  };
  return gatherReport({files, host.machine, host.user, host.shown, host.nameOf}, request, csv);
}

}  // namespace kiv::report
