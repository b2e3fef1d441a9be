#include "survey/survey.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "diagnostics/group_facts.h"
#include "diagnostics/page_validation.h"
#include "input/file_names.h"
#include "messages/console_words.h"
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

/// The analysis of one piece in memory.
class PieceSurvey {
 public:
  PieceSurvey(Files& disk, Machine& machine)
      : machine_(machine), files_(disk, machine), program_({files_, user_, programs_, machine}) {}

  PieceFindings run(const std::vector<std::string>& pages, BadPages badPages);

 private:
  std::string skipBadPages(const std::vector<std::string>& pages, const std::string& namesFile);
  void analyzePages(const std::string& namesFile);
  void addPageThatEndedIt(const std::vector<std::string>& pages);
  std::string wordsOf(const Message& message) const;
  std::string shownPage(const std::vector<std::string>& pages, const BadPage& bad, const Message& message) const;

  Machine& machine_;
  OverlayFiles files_;
  SilentUser user_;
  NoPrograms programs_;
  KivSystem program_;
  PieceFindings findings_;
};

/// "item 3: Structural error in MUS file"
std::string PieceSurvey::wordsOf(const Message& message) const {
  const int item = message.location.item;
  return (item == 0 ? "" : "item " + std::to_string(item) + ": ") +
         consoleSentence(message, [this](const std::string& name) { return withoutPath(machine_, name); });
}

/// "x3B.mus, x3A.mus (item 3: Structural error in MUS file)"
std::string PieceSurvey::shownPage(const std::vector<std::string>& pages, const BadPage& bad,
                                   const Message& message) const {
  std::string shown;
  for (const std::string& file : bad.files) {
    const auto own = std::find_if(pages.begin(), pages.end(), [&](const std::string& page) {
      return machine_.upperCase(withoutPath(machine_, page)) == machine_.upperCase(file);
    });
    shown += (shown.empty() ? "" : ", ") + (own == pages.end() ? file : withoutPath(machine_, *own));
  }
  return shown + " (" + wordsOf(message) + ")";
}

/// Returns a names file of the good pages; "" when none is left.
std::string PieceSurvey::skipBadPages(const std::vector<std::string>& pages, const std::string& namesFile) {
  const PageValidation validation = validatePages({files_, user_, programs_, machine_}, namesFile);
  for (const SkippedPage& page : validation.skipped) {
    BadPage& bad = findings_.badPages.emplace_back();
    for (const std::string& file : page.files) {
      bad.files.push_back(withoutPath(machine_, file));
    }
    bad.reason = page.message.text;
    bad.shown = shownPage(pages, bad, page.message);
    findings_.problems.push_back(page.message.text);
  }
  const std::string goodPages = "\\good pages of a piece";
  files_.addFile(goodPages, validation.names);
  return validation.pages == 0 ? "" : goodPages;
}

void PieceSurvey::analyzePages(const std::string& namesFile) {
  GroupFacts facts({.instruments = true});
  if (exitCodeOfPart(user_, [&] { analyzeWithoutReport(program_, namesFile, false, &facts); }).value_or(0) == 0) {
    findings_.systems = program_.systems.systemCount();
    findings_.instruments = program_.systems.instrumentCount;
    findings_.consistent = program_.systems.isConsistent();
    findings_.multifile = program_.pages.multifileCount != 0;
    findings_.names = shownNames(facts.instruments());
    std::vector<std::vector<std::int16_t>> systems;
    for (std::size_t system = 0; system < facts.systemCount(); ++system) {
      const std::set<std::int16_t> instruments = facts.instrumentsOf(system);
      systems.emplace_back(instruments.begin(), instruments.end());
    }
    findings_.map = smallMap(systems);
  }
}

/// The page that the critical message is about.
void PieceSurvey::addPageThatEndedIt(const std::vector<std::string>& pages) {
  if (findings_.systems || user_.messages().empty()) {
    return;
  }
  const Message& last = user_.messages().back();
  const auto isIt = [&](const std::string& page) { return machine_.upperCase(page) == last.location.file; };
  if (std::any_of(pages.begin(), pages.end(), isIt)) {
    BadPage& bad = findings_.badPages.emplace_back(BadPage{{withoutPath(machine_, last.location.file)}, last.text});
    bad.shown = shownPage(pages, bad, last);
  } else {
    findings_.stopped = wordsOf(last);
  }
}

PieceFindings PieceSurvey::run(const std::vector<std::string>& pages, BadPages badPages) {
  findings_.files = pages.size();
  findings_.pages = countPages(machine_, pages);
  if (const auto problem = problemOfNames(machine_, pages)) {
    findings_.problems.push_back(*problem);
    findings_.stopped = *problem;
    return std::move(findings_);
  }
  std::string namesFile = addNamesFile(pages, files_);
  if (badPages == BadPages::skipped) {
    namesFile = skipBadPages(pages, namesFile);
  }
  if (!namesFile.empty()) {
    analyzePages(namesFile);
    addPageThatEndedIt(pages);
  }
  for (const Message& message : user_.messages()) {
    findings_.problems.push_back(message.text);
  }
  return std::move(findings_);
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

std::size_t countPages(Machine& machine, const std::vector<std::string>& files) {
  std::set<std::string> multifile;
  std::size_t count = 0;
  for (const std::string& file : files) {
    const bool hasLetter = extractPartPage(machine, file).size() == 1;
    const bool isKnown = hasLetter && !multifile
                                           .insert(extractPartName(machine, file) + extractPartNumb(machine, file) +
                                                   extractPartSuff(machine, file))
                                           .second;
    count += isKnown ? 0U : 1U;
  }
  return count;
}

SmallMap smallMap(const std::vector<std::vector<std::int16_t>>& systems) {
  std::set<std::int16_t> ids;
  for (const std::vector<std::int16_t>& system : systems) {
    ids.insert(system.begin(), system.end());
  }
  std::map<std::int16_t, std::size_t> rowOf;
  for (const std::int16_t id : ids) {
    rowOf.emplace(id, rowOf.size());
  }
  const std::size_t rows = std::min(ids.size(), mostMapRows);
  const std::size_t columns = std::min(systems.size(), mostMapColumns);
  std::vector<std::vector<std::size_t>> present(rows, std::vector<std::size_t>(columns));
  std::vector<std::vector<std::size_t>> possible = present;
  for (std::size_t s = 0; s < systems.size(); ++s) {
    const std::size_t column = s * columns / systems.size();
    const std::set<std::int16_t> here(systems[s].begin(), systems[s].end());
    for (const auto& [id, index] : rowOf) {
      const std::size_t row = index * rows / ids.size();
      ++possible[row][column];
      present[row][column] += here.contains(id) ? 1U : 0U;
    }
  }
  SmallMap map(rows, std::string(columns, '2'));
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      const std::size_t count = present[row][column];
      map[row][column] = count == 0 ? '0' : count == possible[row][column] ? '1' : '2';
    }
  }
  return map;
}

PieceFindings surveyPiece(Files& disk, Machine& machine, const std::vector<std::string>& pages, BadPages badPages) {
  return PieceSurvey(disk, machine).run(pages, badPages);
}

}  // namespace kiv
