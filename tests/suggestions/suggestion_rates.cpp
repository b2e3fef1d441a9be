#include "tests/suggestions/suggestion_rates.h"

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <ostream>
#include <utility>
#include <variant>

#include "pagetext/page_text.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "repair/gather_evidence.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"
#include "tests/support/fixed_machine.h"

namespace kiv::test {
namespace {

std::string bytesOf(const WrittenPage& page) {
  const auto bytes = buildPage(page.text);
  if (const auto* error = std::get_if<PageTextError>(&bytes)) {
    std::cerr << page.file << " line " << error->line << ": " << error->reason << '\n';
    std::abort();
  }
  return std::get<std::string>(bytes);
}

std::string fileName(const std::string& path) {
  return path.substr(path.find_last_of('\\') + 1);
}

std::string percent(std::size_t part, std::size_t whole) {
  if (whole == 0) {
    return "-";
  }
  std::string text = std::to_string((part * 10000 + whole / 2) / whole);
  text.insert(0, text.size() < 3 ? 3 - text.size() : 0, '0');
  return text.insert(text.size() - 2, ".");
}

void printLine(std::ostream& out, const std::string& kind, const SuggestionRates& rates) {
  out << "| " << kind << " | " << rates.groups << " | " << rates.staves << " | " << rates.damaged;
  for (std::size_t c = 0; c < rates.proposed.size(); ++c) {
    out << " | " << rates.proposed.at(c) << " | " << percent(rates.right.at(c), rates.proposed.at(c));
  }
  out << " | " << percent(rates.covered, rates.damaged) << " | " << rates.undecided << " | " << rates.groupsWithSure
      << " | " << rates.groupsWithAny << " |\n";
}

}  // namespace

Suggestions suggestFor(const WrittenGroup& group) {
  FixedMachine machine;
  OverlayFiles files("C:\\M", machine);
  std::string names;
  for (const WrittenPage& page : group.pages) {
    files.addFile("C:\\M\\" + page.file, bytesOf(page));
    names += "C:\\M\\" + page.file + " 1\r\n";
  }
  files.addFile("C:\\M\\N.TXT", names);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, machine});
  GroupFacts facts{WantedFacts()};
  analyzeWithoutReport(program, "C:\\M\\N.TXT", false, &facts);
  return suggestIds(gatherEvidence(files, facts));
}

void SuggestionRates::add(const WrittenGroup& group, const Suggestions& suggestions) {
  std::map<std::pair<std::string, std::string>, const WrittenStaff*> meant;
  ++groups;
  for (const WrittenStaff& staff : group.staves) {
    ++staves;
    damaged += staff.writtenId != staff.trueId ? 1 : 0;
    meant[{staff.file, std::to_string(staff.staff)}] = &staff;
  }
  bool any = false;
  bool sure = false;
  for (const Correction& correction : suggestions.corrections) {
    if (correction.at.isCue) {
      continue;
    }
    const WrittenStaff& staff = *meant.at({fileName(correction.at.file), correction.at.staff});
    const auto confidence = static_cast<std::size_t>(correction.confidence);
    const bool isRight = staff.trueId == correction.newId;
    ++proposed.at(confidence);
    right.at(confidence) += isRight ? 1 : 0;
    if (confidence < 2 && staff.writtenId != staff.trueId) {
      ++decided;
      covered += isRight ? 1 : 0;
    }
    any = true;
    sure = sure || confidence == 0;
  }
  for (const Undecided& open : suggestions.undecided) {
    undecided += open.at.isCue ? 0 : 1;
  }
  groupsWithAny += any ? 1 : 0;
  groupsWithSure += sure ? 1 : 0;
}

void SuggestionRates::add(const SuggestionRates& other) {
  groups += other.groups;
  staves += other.staves;
  damaged += other.damaged;
  for (std::size_t c = 0; c < proposed.size(); ++c) {
    proposed.at(c) += other.proposed.at(c);
    right.at(c) += other.right.at(c);
  }
  covered += other.covered;
  decided += other.decided;
  undecided += other.undecided;
  groupsWithSure += other.groupsWithSure;
  groupsWithAny += other.groupsWithAny;
}

void printRates(std::ostream& out, const std::map<std::string, SuggestionRates>& byKind) {
  out << "| groups | number | staves | damaged | sure | right, % | likely | right, % | guess | right, % | covered, % | "
         "undecided | groups with a sure one | with any |\n"
         "| --- | --: | --: | --: | --: | --: | --: | --: | --: | --: | --: | --: | --: | --: |\n";
  for (const auto& [kind, rates] : byKind) {
    printLine(out, kind, rates);
  }
}

}  // namespace kiv::test
