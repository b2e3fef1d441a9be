#include "diagnostics/page_problems.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/number.h"
#include "diagnostics/problem_codes.h"
#include "input/file_names.h"

namespace kiv {
namespace {

Problem atStaff(const Problem& problem, const SystemFact& system, const StaffFact& fact, PageLookup& pages) {
  Problem placed = problem;
  placed.file = fact.file;
  placed.system = system.number;
  placed.staff = strictNumber(fact.staff);
  placed.instrument = strictNumber(fact.instrumentText);
  if (const PageItems::Staff* staff = pages.staff(fact)) {
    placed.place = staff->place;
  }
  return placed;
}

/// The staves whose text stands in their system already. A text of "" is left aside.
template <typename TextOf>
std::vector<Problem> repeatedStaves(const Problem& problem, const PageFacts& facts, PageLookup& pages, TextOf textOf) {
  std::vector<Problem> problems;
  for (const SystemFact* system : facts.systems) {
    std::set<std::string> met;
    for (const StaffFact& staff : system->staves) {
      const std::string text = textOf(staff);
      if (!text.empty() && !met.insert(text).second) {
        problems.push_back(atStaff(problem, *system, staff, pages));
      }
    }
  }
  return problems;
}

std::vector<Problem> zeroStaves(const Problem& problem, const PageFacts& facts, PageLookup& pages) {
  std::vector<Problem> problems;
  for (const SystemFact* system : facts.systems) {
    for (const StaffFact& staff : system->staves) {
      if (staff.instrumentText == "0") {
        problems.push_back(atStaff(problem, *system, staff, pages));
      }
    }
  }
  return problems;
}

/// The system that a staff of a file stands in.
std::optional<std::int16_t> systemOf(const PageFacts& facts, const std::string& file, const std::string& staff) {
  for (const SystemFact* system : facts.systems) {
    const bool holds = std::any_of(system->staves.begin(), system->staves.end(),
                                   [&](const StaffFact& fact) { return fact.staff == staff && fact.file == file; });
    if (holds) {
      return system->number;
    }
  }
  return std::nullopt;
}

/// The cue markers that the message counts, each as often as repeatsOf says.
template <typename RepeatsOf>
std::vector<Problem> cues(const Problem& problem, const PageFacts& facts, PageLookup& pages, RepeatsOf repeatsOf) {
  std::vector<Problem> problems;
  for (const std::string& file : facts.files) {
    for (const PageItems::Cue& cue : pages.page(file).cues) {
      const int repeats = repeatsOf(cue);
      if (repeats == 0) {
        continue;
      }
      const std::string staff = generalNumber(cue.staff);
      Problem placed = problem;
      placed.file = file;
      placed.system = systemOf(facts, file, staff);
      placed.staff = strictNumber(staff);
      placed.instrument = strictNumber(generalNumber(cue.instrument));
      placed.place = cue.place;
      placed.repeats = repeats;
      problems.push_back(placed);
    }
  }
  return problems;
}

std::vector<Problem> recursiveCues(const Problem& problem, const PageFacts& facts, PageLookup& pages) {
  std::unordered_map<float, int> staves;
  for (const std::string& file : facts.files) {
    for (const PageItems::Staff& staff : pages.page(file).staves) {
      staves[staff.instrument] += staff.instrument != 0 ? 1 : 0;
    }
  }
  return cues(problem, facts, pages, [&](const PageItems::Cue& cue) {
    const auto found = staves.find(cue.instrument);
    return found == staves.end() ? 0 : found->second;
  });
}

/// What is undefined depends on the pages before, so the finding itself tells which instruments are.
std::vector<Problem> undefinedCues(const Problem& problem, const PageFacts& facts, PageLookup& pages) {
  std::set<std::string> undefined;
  const std::string& list = facts.problems->undefinedCues;
  for (std::size_t at = 0; at < list.size();) {
    undefined.insert(list.substr(at, list.find(' ', at) - at));
    const std::size_t end = list.find(", ", at);
    at = end == std::string::npos ? list.size() : end + 2;
  }
  return cues(problem, facts, pages,
              [&](const PageItems::Cue& cue) { return undefined.contains(generalNumber(cue.instrument)) ? 1 : 0; });
}

}  // namespace

SystemsByFile::SystemsByFile(std::vector<SystemFact> facts) : systems(std::move(facts)) {
  for (std::size_t s = 0; s < systems.size(); ++s) {
    for (const StaffFact& staff : systems[s].staves) {
      std::vector<std::size_t>& ofFile = places[staff.file];
      if (ofFile.empty() || ofFile.back() != s) {
        ofFile.push_back(s);
      }
    }
  }
}

std::vector<std::string> filesOf(Host& host, const PageEntry& page, const std::string& musFileName) {
  if (!page.isMultifile()) {
    return {musFileName};
  }
  const std::string beforeLetter =
      page.pagePath + extractPartName(host, page.pageName) + extractPartNumb(host, page.pageName);
  const std::string suffix = extractPartSuff(host, page.pageName);
  std::vector<std::string> files;
  const std::string lettersUpward(page.pageLetters.rbegin(), page.pageLetters.rend());
  for (const char letter : lettersUpward) {
    std::string file = beforeLetter;
    file += letter;
    files.push_back(file + suffix);
  }
  return files;
}

bool hasUsualLetters(const PageEntry& page) {
  char usual = 'A';
  return std::all_of(page.pageLetters.begin(), page.pageLetters.end(),
                     [&](char letter) { return letter == usual++ && letter <= 'Z'; });
}

std::vector<std::string_view> shownCodes(const PageProblems& problems, bool allowZeroInstrId) {
  std::vector<std::string_view> codes;
  const auto add = [&](bool isShown, std::string_view code) {
    if (isShown) {
      codes.push_back(code);
    }
  };
  add(problems.dupIdCount >= 1, code::duplicateInstrumentId);
  add(problems.dupStaffCount >= 1, code::duplicateStaffNumber);
  add(problems.zeroIdCount >= 1 && !allowZeroInstrId, code::zeroInstrumentId);
  add(problems.recursiveCueCount >= 1, code::recursiveCue);
  add(problems.undefinedCueCount >= 1, code::undefinedCue);
  return codes;
}

PageFacts factsOf(Host& host, const FindingsLog::Page& page, const SystemsByFile& report) {
  PageFacts facts{filesOf(host, page.page, page.musFileName), {}, &page.problems};
  std::set<std::size_t> places;
  for (const std::string& file : facts.files) {
    const auto found = report.places.find(file);
    if (found != report.places.end()) {
      places.insert(found->second.begin(), found->second.end());
    }
  }
  for (const std::size_t place : places) {
    facts.systems.push_back(&report.systems[place]);
  }
  return facts;
}

std::vector<Problem> placesOf(const Problem& problem, const PageFacts& facts, PageLookup& pages) {
  if (problem.code == code::duplicateInstrumentId) {
    return repeatedStaves(problem, facts, pages, [](const StaffFact& staff) {
      return staff.instrumentText == "0" ? "" : staff.instrumentText;
    });
  }
  if (problem.code == code::duplicateStaffNumber) {
    return repeatedStaves(problem, facts, pages, [](const StaffFact& staff) { return staff.newStaff; });
  }
  if (problem.code == code::zeroInstrumentId) {
    return zeroStaves(problem, facts, pages);
  }
  return problem.code == code::recursiveCue ? recursiveCues(problem, facts, pages)
                                            : undefinedCues(problem, facts, pages);
}

}  // namespace kiv
