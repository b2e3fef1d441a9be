#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/group_facts.h"
#include "diagnostics/page_validation.h"
#include "diagnostics/problems.h"
#include "report_page/gather_report.h"
#include "report_page/system_finder.h"
#include "report_page/system_pictures.h"

namespace kiv::report {

/// Groups what is wrong with a group by code, and finds its systems.
class ProblemGrouper {
 public:
  ProblemGrouper(const ReportHost& host, const GroupFacts& facts);

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

  /// The index of the system that a staff of a file is of, as the finder has it.
  std::optional<std::size_t> systemOf(const std::string& file, double staff) { return finder_.withStaff(file, staff); }

 private:
  ReportProblem& groupOf(std::string_view code, bool isWarning, bool isAboutItem = false);
  void addPlace(const Problem& problem, bool isWarning);

  const ReportHost& host_;
  const GroupFacts& facts_;
  SystemFinder finder_;
  std::vector<ReportProblem> problems_;
  std::map<std::size_t, std::vector<WantedMark>> marks_;
};

/// "PIECE007.MUS, staff 2, item 4"; what is not known is left out.
std::string placeWords(const std::string& file, const std::string& staff, int item);

}  // namespace kiv::report
