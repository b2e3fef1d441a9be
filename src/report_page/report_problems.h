#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/page_validation.h"
#include "diagnostics/problems.h"
#include "diagnostics/system_facts.h"
#include "report_page/gather_report.h"
#include "report_page/system_pictures.h"

namespace kiv::report {

/// Groups what is wrong with a group by code, and finds its systems.
class ProblemGrouper {
 public:
  ProblemGrouper(const ReportHost& host, const std::vector<SystemFact>& facts);

  void addProblems(const std::vector<Problem>& problems, bool areWarnings);
  /// One about a result of a conversion, which names its system, and its bar if it is about one.
  void addResultWarning(const Message& warning);
  /// The index of the problem of that code among all; there must be one.
  std::size_t indexOf(std::string_view code) const;
  /// The function says what a file is instead of a page.
  void addSkipped(const std::vector<SkippedPage>& pages, const std::function<PageStep(const SkippedPage&)>& stepAfter);

  const std::vector<ReportProblem>& problems() const { return problems_; }
  /// The marks of each system with problems, by its index.
  const std::map<std::size_t, std::vector<WantedMark>>& marks() const { return marks_; }

  /// The index of the system that a staff of a file is of; that of the only one of the file when it has no such staff,
  /// and one beyond the last when it is not known.
  std::size_t systemOf(const std::string& file, double staff) const;

 private:
  ReportProblem& groupOf(std::string_view code, bool isWarning, bool isAboutItem = false);
  void addPlace(const Problem& problem, bool isWarning);

  const ReportHost& host_;
  const std::vector<SystemFact>& facts_;
  std::map<std::string, std::vector<std::pair<double, std::size_t>>> systems_;  // staves with their systems, by file
  std::map<std::int16_t, std::size_t> indices_;                                 // by the number of the system
  std::vector<ReportProblem> problems_;
  std::map<std::size_t, std::vector<WantedMark>> marks_;
};

/// "PIECE007.MUS, staff 2, item 4"; what is not known is left out.
std::string placeWords(const std::string& file, const std::string& staff, int item);

}  // namespace kiv::report
