#include "report_page/report_problems.h"

#include <algorithm>

#include "base/number.h"

namespace kiv::report {

std::string placeWords(const std::string& file, const std::string& staff, int item) {
  return file + (staff.empty() ? "" : ", staff " + staff) + (item == 0 ? "" : ", item " + std::to_string(item));
}

ProblemGrouper::ProblemGrouper(const ReportHost& host, const GroupFacts& facts)
    : host_(host), facts_(facts), finder_(facts) {}

ReportProblem& ProblemGrouper::groupOf(std::string_view code, bool isWarning, bool isAboutItem) {
  const ProblemText* text = &problemTextOf(code, isAboutItem);
  const auto known = std::find_if(problems_.begin(), problems_.end(),
                                  [&](const ReportProblem& problem) { return problem.text == text; });
  if (known != problems_.end()) {
    return *known;
  }
  return problems_.emplace_back(ReportProblem{text, isWarning, {}});
}

void ProblemGrouper::addPlace(const Problem& problem, bool isWarning) {
  ReportProblem& group = groupOf(problem.code, isWarning);
  const auto about = static_cast<std::size_t>(&group - problems_.data());
  const std::string file = problem.file.value_or("");
  std::optional<std::size_t> system;
  if (problem.system) {
    system = finder_.withNumber(*problem.system);
  } else if (problem.file) {
    system = systemOf(file, problem.staff.value_or(0));
  }
  const std::string staff = problem.staff ? generalNumber(static_cast<float>(*problem.staff)) : "";
  const int item = problem.place ? problem.place->item : 0;
  ReportPlace place;
  place.words = problem.file ? placeWords(host_.nameOf(file), staff, item) : "the whole group";
  if (system) {
    place.system = static_cast<std::size_t>(facts_.systemNumber(*system));
    const auto number = static_cast<float>(problem.staff.value_or(0));
    marks_[*system].push_back({file, number, problem.staff ? item : 0, about, false});
  }
  group.places.push_back(std::move(place));
}

void ProblemGrouper::addProblems(const std::vector<Problem>& problems, bool areWarnings) {
  for (const Problem& problem : problems) {
    addPlace(problem, areWarnings);
  }
}

void ProblemGrouper::addResultWarning(const Message& warning) {
  const Location& at = warning.location;
  ReportPlace place;
  place.words = host_.nameOf(at.file) + (at.bar ? ", bar " + std::to_string(*at.bar) : "") + ": " + warning.text;
  if (const auto index = finder_.withNumber(at.system.value_or(0))) {
    place.system = static_cast<std::size_t>(facts_.systemNumber(*index));
  }
  groupOf(warning.code, true).places.push_back(std::move(place));
}

std::size_t ProblemGrouper::indexOf(std::string_view code) const {
  const ProblemText* text = &problemTextOf(code);
  const auto known = std::find_if(problems_.begin(), problems_.end(),
                                  [&](const ReportProblem& problem) { return problem.text == text; });
  return static_cast<std::size_t>(known - problems_.begin());
}

void ProblemGrouper::addSkipped(const std::vector<SkippedPage>& pages,
                                const std::function<PageStep(const SkippedPage&)>& stepAfter) {
  for (const SkippedPage& page : pages) {
    const std::string mistaken = stepAfter ? stepAfter(page).mistaken : "";
    const std::string name = host_.nameOf(page.namedFile());
    std::string words = mistaken.empty() ? placeWords(name, "", page.message.location.item)
                                         : std::string(name).append(": ").append(mistaken);
    for (const std::string& file : page.otherFiles()) {
      words += "; left out with it: " + host_.nameOf(file);
    }
    groupOf(page.message.code, false, page.message.location.item > 0).places.push_back({0, std::move(words)});
  }
}

}  // namespace kiv::report
