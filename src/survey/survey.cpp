#include "survey/survey.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "input/file_names.h"
#include "platform/memory/quiet_host.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// A page file with what it is sorted by.
struct NamedFile {
  std::string number;  // without leading zeros
  std::string page;
  std::string name;

  auto key() const { return std::tuple(number.size(), number, page, name); }
};

std::string withoutZeros(const std::string& number) {
  return number.substr(std::min(number.find_first_not_of('0'), number.size()));
}

std::vector<std::string> namesInOrder(std::vector<NamedFile> files) {
  std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.key() < b.key(); });
  std::vector<std::string> names;
  names.reserve(files.size());
  for (NamedFile& file : files) {
    names.push_back(std::move(file.name));
  }
  return names;
}

/// Runs the analysis. False when a critical message ended it.
bool endsWell(QuietHost& host, KivSystem& program, const std::vector<std::string>& pages) {
  const std::string namesFile = "\\names of a piece";
  std::string lines;
  for (const std::string& page : pages) {
    host.addAlias(page);
    lines += page + " 1\r\n";
  }
  host.addFile(namesFile, lines);
  try {
    analyse(program, namesFile, false);
    return true;
  } catch (const ProgramEnd& end) {
    return end.exitCode == 0;
  }
}

}  // namespace

std::vector<Piece> piecesOf(Host& host, const std::vector<std::string>& names) {
  std::map<std::tuple<std::string, std::string>, std::vector<NamedFile>> groups;  // by prefix and suffix
  for (const std::string& name : names) {
    const std::string upper = host.upperCase(name);
    if (!upper.ends_with(".MUS")) {
      continue;
    }
    const std::string prefix = extractPartName(host, name);
    const std::string number = extractPartNumb(host, name);
    const std::string page = extractPartPage(host, name);
    const std::string suffix = extractPartSuff(host, name);
    const bool follows =
        !number.empty() && page.size() <= 1 && std::string(prefix).append(number).append(page).append(suffix) == upper;
    groups[follows ? std::tuple(prefix, suffix) : std::tuple(upper, name)].push_back(
        {withoutZeros(number), page, name});
  }
  std::vector<Piece> pieces;
  pieces.reserve(groups.size());
  for (const auto& [key, files] : groups) {
    pieces.push_back({std::get<0>(key), namesInOrder(files)});
  }
  return pieces;
}

PieceFindings surveyPiece(Host& disk, const std::vector<std::string>& pages) {
  PieceFindings findings;
  findings.pages = pages.size();
  if (std::any_of(pages.begin(), pages.end(),
                  [](const std::string& name) { return name.find_first_of("\r\n") != std::string::npos; })) {
    findings.problems.emplace_back("A page file whose name holds a line end cannot be listed in a names file");
    return findings;
  }
  QuietHost host(disk);
  KivSystem program(host);
  if (endsWell(host, program, pages)) {
    findings.systems = program.systems.systemCount();
    findings.instruments = program.systems.instrumentCount;
    findings.consistent = program.systems.isConsistent();
    findings.multifile = program.pages.multifileCount != 0;
  }
  if (!program.pages.pages.empty()) {
    findings.pages = program.pages.pages.size();
  }
  findings.problems = host.messages();
  return findings;
}

}  // namespace kiv
