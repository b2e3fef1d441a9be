#include "survey/survey.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

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

/// What keeps the pages from being one group that a names file can list; nullopt when nothing does.
std::optional<std::string> problemOfNames(Machine& machine, const std::vector<std::string>& pages) {
  std::map<std::string, std::string> known;
  for (const std::string& page : pages) {
    if (page.find_first_of("\r\n") != std::string::npos) {
      return "A page file whose name holds a line end cannot be listed in a names file";
    }
    const auto [other, isNew] = known.emplace(machine.upperCase(page), page);
    if (!isNew) {
      return withoutPath(machine, other->second) + " and " + withoutPath(machine, page) +
             " differ in case only, and cannot be in one group";
    }
  }
  return std::nullopt;
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
  if (const auto problem = problemOfNames(machine, pages)) {
    findings.problems.push_back(*problem);
    return findings;
  }
  OverlayFiles files(disk, machine);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, machine});
  const std::string namesFile = addNamesFile(pages, files);
  if (exitCodeOf(user, [&] { analyze(program, namesFile, false); }).value_or(0) == 0) {
    findings.systems = program.systems.systemCount();
    findings.instruments = program.systems.instrumentCount;
    findings.consistent = program.systems.isConsistent();
    findings.multifile = program.pages.multifileCount != 0;
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
