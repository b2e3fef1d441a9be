#include "survey/survey.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "diagnostics/group_facts.h"
#include "input/file_names.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
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

/// The names file of the pages, in memory only.
std::string addNamesFile(const std::vector<std::string>& pages, OverlayFiles& files) {
  std::string namesFile = "\\names of a piece";
  std::string lines;
  for (const std::string& page : pages) {
    files.addAlias(page);
    lines += page + " 1\r\n";
  }
  files.addFile(namesFile, lines);
  return namesFile;
}

}  // namespace

std::vector<Piece> piecesOf(Machine& machine, const std::vector<std::string>& names) {
  std::map<std::tuple<std::string, std::string>, std::vector<NamedFile>> groups;  // by prefix and suffix
  for (const std::string& name : names) {
    const std::string upper = machine.upperCase(name);
    if (!upper.ends_with(".MUS")) {
      continue;
    }
    const std::string prefix = extractPartName(machine, name);
    const std::string number = extractPartNumb(machine, name);
    const std::string page = extractPartPage(machine, name);
    const std::string suffix = extractPartSuff(machine, name);
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

PieceFindings surveyPiece(Files& disk, Machine& machine, const std::vector<std::string>& pages) {
  PieceFindings findings;
  findings.pages = pages.size();
  if (std::any_of(pages.begin(), pages.end(),
                  [](const std::string& name) { return name.find_first_of("\r\n") != std::string::npos; })) {
    findings.problems.emplace_back("A page file whose name holds a line end cannot be listed in a names file");
    return findings;
  }
  OverlayFiles files(disk, machine);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, machine});
  const std::string namesFile = addNamesFile(pages, files);
  GroupFacts facts({.instruments = true});
  if (exitCodeOf(user, [&] { analyze(program, namesFile, false, &facts); }).value_or(0) == 0) {
    findings.systems = program.systems.systemCount();
    findings.instruments = program.systems.instrumentCount;
    findings.consistent = program.systems.isConsistent();
    findings.multifile = program.pages.multifileCount != 0;
    findings.names = shownNames(facts.instruments());
  }
  if (!program.pages.pages.empty()) {
    findings.pages = program.pages.pages.size();
  }
  for (const Message& message : user.messages()) {
    findings.problems.push_back(message.text);
  }
  return findings;
}

}  // namespace kiv
