#include "report_page/panel_report.h"

#include <set>

#include "input/file_names.h"
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

/// The pages as arguments of a command line: a pattern, or where none stands for them alone, their names.
std::string argumentsOf(const ReportHost& host, const AnalyzedGroup& group, const CommandWord& word) {
  constexpr std::size_t mostNamed = 4;
  std::string arguments = group.allowZeroInstrId ? " --allow-zero-id" : "";
  std::set<std::string> files(group.files.begin(), group.files.end());
  if (files.size() > mostNamed) {
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
      return arguments + " " + word(folder + *pattern);
    }
  }
  for (const std::string& file : group.files) {
    arguments += " " + word(file);
  }
  return arguments;
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
  request.arguments = argumentsOf(host, group, word);
  request.argumentOf = word;
  request.firstResult = firstResultOf(host, group);
  request.typedResult = word(request.firstResult);
  return gatherReport({files, host.machine, host.user, host.shown, host.nameOf}, request, csv);
}

}  // namespace kiv::report
