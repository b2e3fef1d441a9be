#include "diagnostics/problems.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "analysis/report.h"
#include "base/number.h"
#include "diagnostics/page_problems.h"
#include "diagnostics/problem_codes.h"
#include "diagnostics/system_facts.h"
#include "input/file_names.h"

namespace kiv {
namespace {

constexpr std::array aboutAFile = {code::structureError, code::tooManyItems, code::noSystemBarline, code::naming,
                                   code::namingNoNumber};
constexpr std::array runTimeErrors = {code::subscriptOutOfRange, code::overflow, code::typeMismatch,
                                      code::divisionByZero, code::runTimeError};
constexpr std::array aboutNames = {code::namesNotTerminated, code::namesNoFolder, code::namesFoldersDiffer,
                                   code::namesNotErased, code::noInputFiles};

bool isOneOf(std::string_view code, std::span<const std::string_view> codes) {
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/// The part of a run-time error's message that names what was worked on.
std::string_view workedOn(std::string_view text) {
  constexpr std::string_view lineEnd = "\r\n";
  const std::size_t at = text.find(lineEnd);
  return at == std::string_view::npos ? "" : text.substr(at + lineEnd.size());
}

std::optional<std::string> orNone(const std::string& name) {
  return name.empty() ? std::nullopt : std::optional(name);
}

/// The first file of a page.
std::string firstFile(Host& host, const PageEntry& page) {
  if (!page.isMultifile()) {
    return page.pagePath + withoutPath(page.pageName);
  }
  return filesOf(host, page, "").back();
}

/// Puts the messages of one run together with what is known of them.
class ProblemFinder {
 public:
  ProblemFinder(Host& host, const RunState& run) : host_(host), run_(run), pages_(host) {
    for (const FindingsLog::Page& page : run.findings.pages()) {
      for (const std::string_view code : shownCodes(page.problems, run.allowZeroInstrId)) {
        expected_.push_back({code, &page});
      }
    }
    for (const PageEntry& page : run.pages.pages) {
      if (page.isMultifile() && !hasUsualLetters(page)) {
        oddPages_.push_back(&page);
      }
    }
  }

  void take(const RunMessage& message, std::size_t index);
  std::vector<Problem> result() { return std::move(problems_); }

 private:
  struct Expected {
    std::string_view code;
    const FindingsLog::Page* page = nullptr;
  };

  std::optional<std::string> fileOfNames(std::string_view code) const;
  void takeFinding(Problem problem);
  void takePageLetters(Problem problem);
  void takeFileProblem(Problem problem, const RunMessage& message);
  void takeRunTimeError(Problem problem, const RunMessage& message);
  void takeRecord(Problem problem, std::string_view record);
  const SystemsByFile& report();

  Host& host_;
  const RunState& run_;
  PageLookup pages_;
  std::vector<Expected> expected_;  // the findings in the order of their messages
  std::size_t nextExpected_ = 0;
  std::vector<const PageEntry*> oddPages_;
  std::size_t nextOddPage_ = 0;
  std::optional<SystemsByFile> report_;
  std::vector<Problem> problems_;
};

const SystemsByFile& ProblemFinder::report() {
  if (!report_) {
    report_.emplace(readSystemFacts(host_));
  }
  return *report_;
}

void ProblemFinder::take(const RunMessage& message, std::size_t index) {
  Problem problem;
  problem.code = codeOf(message.text);
  problem.severity = message.icon;
  problem.message = index;
  if (nextExpected_ < expected_.size() && expected_[nextExpected_].code == problem.code) {
    takeFinding(problem);
  } else if (problem.code == code::pageLetters) {
    takePageLetters(problem);
  } else if (isOneOf(problem.code, aboutAFile)) {
    takeFileProblem(problem, message);
  } else if (isOneOf(problem.code, runTimeErrors)) {
    takeRunTimeError(problem, message);
  } else {
    problem.file = message.file.empty() ? fileOfNames(problem.code) : message.file;
    problems_.push_back(problem);
  }
}

/// The file that a message about the selection is about.
std::optional<std::string> ProblemFinder::fileOfNames(std::string_view code) const {
  if (isOneOf(code, aboutNames)) {
    return orNone(run_.namesFile);
  }
  if (code == code::namesFileMissing && !run_.names.nameList.empty()) {
    return run_.names.nameList.back();
  }
  return code == code::reservedName && run_.names.nameCount > 0 ? std::optional(run_.names.name(1)) : std::nullopt;
}

void ProblemFinder::takeFinding(Problem problem) {
  const FindingsLog::Page& page = *expected_[nextExpected_++].page;
  const PageFacts facts = factsOf(host_, page, report());
  const std::vector<Problem> places = placesOf(problem, facts, pages_);
  if (places.empty()) {
    problem.file = facts.files.size() == 1 ? std::optional(facts.files.front()) : std::nullopt;
    problems_.push_back(problem);
  }
  problems_.insert(problems_.end(), places.begin(), places.end());
}

void ProblemFinder::takePageLetters(Problem problem) {
  if (nextOddPage_ < oddPages_.size()) {
    problem.file = firstFile(host_, *oddPages_[nextOddPage_++]);
  }
  problems_.push_back(problem);
}

void ProblemFinder::takeFileProblem(Problem problem, const RunMessage& message) {
  problem.file = orNone(message.file.empty() ? run_.musFileName : message.file);
  if (problem.code == code::structureError && problem.file) {
    const PageItems& items = pages_.page(*problem.file);
    if (items.end == ReadStatus::structuralError) {
      problem.place = items.endPlace;
    }
  }
  problems_.push_back(problem);
}

void ProblemFinder::takeRunTimeError(Problem problem, const RunMessage& message) {
  const std::string& file = message.file.empty() ? run_.musFileName : message.file;
  const std::string_view place = workedOn(message.text);
  if (place.starts_with("SYSTEM=")) {
    takeRecord(problem, place);
    return;
  }
  if (!file.empty() && place.starts_with(file)) {
    problem.file = file;
    const PageItems& items = pages_.page(file);
    if (problem.code == code::subscriptOutOfRange && items.end == ReadStatus::tooManyParameters) {
      problem.place = items.endPlace;
    }
  }
  problems_.push_back(problem);
}

/// A record of the report that holds what no whole number of 16 bits is.
void ProblemFinder::takeRecord(Problem problem, std::string_view record) {
  constexpr std::string_view fileKey = ",FILE=";
  StaffFact fact;
  fact.instrumentText = getElt(record, ",INSTRID");
  fact.staff = getElt(record, ",STAFF");
  const std::size_t at = record.find(fileKey);
  fact.file = at == std::string_view::npos ? "" : record.substr(at + fileKey.size());
  problem.file = orNone(fact.file);
  problem.staff = strictNumber(fact.staff);
  problem.instrument = strictNumber(fact.instrumentText);
  const auto system = strictNumber(getElt(record, "SYSTEM"));
  problem.system = system ? toInt16(*system) : std::nullopt;
  if (const PageItems::Staff* staff = fact.file.empty() ? nullptr : pages_.staff(fact)) {
    problem.place = staff->place;
  }
  problems_.push_back(problem);
}

/// Counts together records of one message that tell of the same place.
std::vector<Problem> counted(const std::vector<Problem>& problems) {
  std::vector<Problem> once;
  for (const Problem& problem : problems) {
    Problem alike = problem;
    if (!once.empty()) {
      alike.repeats = once.back().repeats;
    }
    if (!once.empty() && alike == once.back() && problem.place) {
      once.back().repeats += problem.repeats;
    } else {
      once.push_back(problem);
    }
  }
  return once;
}

}  // namespace

void FindingsLog::pageChecked(const PageEntry& page, const std::string& musFileName, const PageProblems& problems) {
  if (problems != PageProblems{}) {
    pages_.push_back({page, musFileName, problems});
  }
}

std::vector<Problem> findProblems(Host& host, const RunState& run, const std::vector<RunMessage>& messages) {
  ProblemFinder finder(host, run);
  for (std::size_t i = 0; i < messages.size(); ++i) {
    finder.take(messages[i], i);
  }
  return counted(finder.result());
}

}  // namespace kiv
