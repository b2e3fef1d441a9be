#include "apps/kivsys/survey/survey_reports.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "apps/kivsys/commands/report_requests.h"
#include "apps/kivsys/output/suggestions_output.h"
#include "apps/kivsys/safety/made_folder.h"
#include "apps/kivsys/safety/output_file.h"
#include "base/sha256.h"
#include "input/file_names.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "report_page/gather_report.h"
#include "report_page/made_by.h"
#include "report_page/report_page.h"
#include "report_page/survey_page.h"

namespace kiv {
namespace {

std::string shown(const std::string& text) {
  return NativeSystem::toUtf8(printable(text));
}

/// The lines of a message after one another.
std::string onOneLine(const std::string& message) {
  std::string line;
  for (const char c : message) {
    line += c == '\r' ? "" : c == '\n' ? "; " : std::string(1, c);
  }
  return line;
}

/// The pages as the arguments of a command line, each after a blank: a pattern, which kivsys understands, or their
/// names.
std::string argumentsOf(NativeSystem& system, const LibraryPiece& piece) {
  constexpr std::size_t mostNamed = 4;
  std::vector<FoundFile> pages;
  for (const std::string& page : piece.pages) {
    pages.push_back({page, system.diskName(page)});
  }
  const auto pattern = pages.size() > mostNamed ? patternFor(system, pages) : std::nullopt;
  const std::string word = pattern ? patternWord(folderOfPath(system, pages.front().path), *pattern) : "";
  if (!word.empty()) {
    return " " + word;
  }
  std::string arguments;
  for (const FoundFile& page : pages) {
    arguments += " " + fileWord(page.path);
  }
  return arguments;
}

/// Analyzes a piece again, without the pages that cannot be read.
report::GatheredReport gatherPiece(NativeSystem& system, const LibraryPiece& piece,
                                   const report::CommandParts& commands) {
  OverlayFiles files(system, system);
  SilentUser user;
  NoPrograms programs;
  std::string lines;
  for (const std::string& page : piece.pages) {
    files.addAlias(page);
    lines += page + " 1\r\n";
  }
  files.addFile("\\names of a piece", lines);
  const PageValidation validation = validatePages({files, user, programs, system}, "\\names of a piece");
  files.addFile("\\good pages of a piece", validation.names);
  report::ReportRequest request;
  request.namesFile = validation.pages == 0 ? "" : "\\good pages of a piece";
  request.commands = commands;
  request.commands.pages = argumentsOf(system, piece);
  request.stepAfter = [&](const SkippedPage& page) {
    const std::string path = system.diskName(page.namedFile());
    return pageStep(page, {path, path});
  };
  request.skipped = validation.skipped;
  const report::ReportHost host{files, system, user, shown,
                                [&](const std::string& file) { return shown(withoutPath(system, file)); }};
  const report::CsvWriter csv{std::string(correctionHeads) + "\n", [&](const Correction& correction) {
                                return correctionLine(correction, withoutPath(system, correction.at.file));
                              }};
  return report::gatherReport(host, request, csv);
}

/// Differs when a page of the piece has changed, or there are other pages.
std::string stateMark(const LibraryPiece& piece) {
  std::string stamps;
  for (const PageStamp& stamp : piece.stamps) {
    stamps += stamp.name + "\n" + std::to_string(stamp.bytes) + "\n" + std::to_string(stamp.changed) + "\n";
  }
  return sha256(stamps);
}

report::PieceVerdict verdictOf(const PieceFindings& findings) {
  if (!findings.badPages.empty() || !findings.systems) {
    return report::PieceVerdict::unreadable;
  }
  if (!findings.problems.empty()) {
    return report::PieceVerdict::hasProblems;
  }
  const bool isUsable = findings.consistent.value_or(false) && !findings.multifile.value_or(true);
  return isUsable ? report::PieceVerdict::usable : report::PieceVerdict::needsConversion;
}

}  // namespace

/// The name stays the same from survey to survey, and differs from piece to piece.
std::string SurveyReports::nameOf(const LibraryPiece& piece) {
  constexpr std::size_t digits = 10;
  std::string name;
  for (const char c : piece.prefix) {
    const bool isPlain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    name += isPlain ? c : '_';
  }
  constexpr std::size_t longest = 60;
  return name.substr(0, longest) + "-" + sha256(piece.key()).substr(0, digits);
}

std::string SurveyReports::fileOf(const LibraryPiece& piece) const {
  return (std::filesystem::path(folder_) / (nameOf(piece) + ".html")).string();
}

/// What is written by the commands of different reports must not meet: each piece has folders of its own.
report::CommandParts SurveyReports::commandsFor(const LibraryPiece& piece) const {
  report::CommandParts parts;
  parts.newResult = " --result " + fileWord(system_.newName("converted-" + nameOf(piece)) + "/WORK0001.MUS");
  parts.newFolder = fileWord(system_.newName("corrected-" + nameOf(piece)));
  parts.report = " -o report.html";
  parts.shown = shownCommand;
  return parts;
}

std::string SurveyReports::linkOf(const LibraryPiece& piece) const {
  if (folder_.empty()) {
    return "";
  }
  const auto base = std::filesystem::absolute(page_).parent_path().lexically_normal();
  const auto file = std::filesystem::absolute(fileOf(piece)).lexically_normal();
  return report::encodedLink(NativeSystem::toUtf8(file.lexically_relative(base).generic_string()));
}

/// Why the outputs cannot be written beside one another: two have the same name.
std::optional<std::string> SurveyReports::refusalOfNames(const Library& library, const std::string& state) const {
  const auto key = [&](const std::string& name) { return system_.upperCase(system_.fullName(name)); };
  const std::string page = key(page_);
  const std::string folder = folder_.empty() ? "" : key(folder_);
  if (folder == page || folder.starts_with(page + "\\")) {
    return page_ + " cannot be the page of the library and a folder of reports; name another file with --html";
  }
  std::set<std::string> reports;
  for (const LibraryPiece& piece : library.pieces) {
    if (!folder.empty()) {
      reports.insert(key(fileOf(piece)));
    }
  }
  if (reports.contains(page)) {
    return page_ + " is the report of a piece; name another file with --html";
  }
  if (!state.empty() && (key(state) == page || key(state) == folder || reports.contains(key(state)))) {
    return state + " is a page of this survey; name another file with --resume";
  }
  return std::nullopt;
}

std::vector<std::string> SurveyReports::refusals(const Library& library, const std::string& state) {
  if (page_.empty()) {
    return {};
  }
  if (const auto reason = refusalOfNames(library, state)) {
    return {*reason};
  }
  InputFiles inputs;
  for (const LibraryPiece& piece : library.pieces) {
    for (const std::string& page : piece.pages) {
      inputs.add(system_.diskName(page));
    }
  }
  std::vector<std::string> outputs{page_};
  if (!folder_.empty()) {
    if (const auto reason = PlannedFolder(system_, folder_, folder_).refusal()) {
      return {*reason};
    }
    for (const LibraryPiece& piece : library.pieces) {
      outputs.push_back(fileOf(piece));
    }
  }
  std::vector<std::string> reasons;
  for (const std::string& output : outputs) {
    const auto more = refusalsOfOutput(system_, {"report", system_.fullName(output), OutputKind::htmlReport}, inputs);
    reasons.insert(reasons.end(), more.begin(), more.end());
  }
  return reasons;
}

std::optional<std::string> SurveyReports::prepare(ConsoleUser& user) {
  if (folder_.empty()) {
    return std::nullopt;
  }
  const PlannedFolder folder(system_, folder_, folder_);
  return folder.isMissing() ? folder.make(nullptr, user) : std::nullopt;
}

/// The report is of the pages as they are: it has their sizes and times.
bool SurveyReports::hasReport(const LibraryPiece& piece) const {
  constexpr std::size_t mostHead = 2000;
  if (folder_.empty() || kindOf(fileOf(piece)) != PathKind::file) {
    return false;
  }
  std::string head(mostHead, '\0');
  std::ifstream file(fileOf(piece), std::ios::binary);
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  return head.find(stateMark(piece)) != std::string::npos;
}

bool SurveyReports::needsReport(const LibraryPiece& piece, bool isNew) const {
  const bool isRecent = !piece.digest.empty();  // a page may change again without another time
  return !folder_.empty() && (isNew || isRecent || !hasReport(piece));
}

std::optional<std::string> SurveyReports::write(NativeSystem& system, const LibraryPiece& piece) const {
  report::GatheredReport gathered = gatherPiece(system, piece, commandsFor(piece));
  if (gathered.ended) {
    return "no report of " + piece.folder + ", " + piece.prefix + ": the analysis ended";
  }
  gathered.data.made = report::madeBy(system, "kivsys");
  gathered.data.state = stateMark(piece);
  const std::string file = fileOf(piece);
  const auto failure = system.replaceFile(system.fullName(file), report::reportPage(gathered.data));
  return failure ? std::optional("cannot write " + file + ": " + *failure) : std::nullopt;
}

std::optional<std::string> SurveyReports::writePage(const std::vector<LibraryPiece>& pieces,
                                                    const std::vector<std::optional<PieceFindings>>& findings,
                                                    const std::vector<std::string>& folders) {
  report::SurveyData data;
  for (const std::string& folder : folders) {
    data.title += (data.title.empty() ? "" : ", ") + shown(folder);
  }
  data.made = report::madeBy(system_, "kivsys");
  for (std::size_t p = 0; p < pieces.size(); ++p) {
    if (!findings[p]) {
      data.interrupted = true;
      continue;
    }
    report::SurveyRow row{shown(pieces[p].folder),
                          shown(pieces[p].prefix),
                          findings[p]->pages,
                          findings[p]->systems,
                          findings[p]->instruments,
                          verdictOf(*findings[p]),
                          {},
                          findings[p]->map,
                          ""};
    for (const std::string& problem : findings[p]->problems) {
      row.problems.push_back(printableUtf8(onOneLine(problem)));
    }
    for (const std::string& gap : pieces[p].gaps) {
      row.problems.push_back(shown(gap));
    }
    row.link = hasReport(pieces[p]) ? linkOf(pieces[p]) : "";
    data.rows.push_back(std::move(row));
  }
  const auto failure =
      writeOutput(system_, {"report", system_.fullName(page_), OutputKind::htmlReport}, report::surveyPage(data));
  return failure ? std::optional(notWritten(page_, page_, *failure)) : std::nullopt;
}

}  // namespace kiv
