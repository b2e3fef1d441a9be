#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "verify/finding.h"
#include "verify/found_report.h"

namespace kiv::proof {

/// The lines in which a text differs from the derived one: their number, and phrases about the first of them.
class LineDifferences {
 public:
  using Line = std::optional<std::string_view>;

  /// Compares the next line of both; one that has no such line any more has none.
  void compare(const Line& found, const Line& expected);

  /// The number of lines that were compared.
  std::size_t lines() const { return lines_; }
  /// Begins the comparison after this line of both.
  void skipLine() { ++lines_; }
  /// The index of the first line that differs; nullopt for none.
  std::optional<std::size_t> first() const { return first_; }
  /// The phrase about it.
  const std::string& firstPhrase() const { return phrases_.front(); }
  /// A finding for each line, or one for more than a few.
  std::vector<Finding> findings(const std::string& name) const;

 private:
  std::size_t lines_ = 0;
  std::size_t different_ = 0;
  std::optional<std::size_t> first_;
  std::vector<std::string> phrases_;
};

/// Compares a report with the derived one, line by line, so that neither is in memory as a whole. Of the first line of
/// a report, the numbers in version, date and time may be any.
class ReportComparison {
 public:
  /// Nothing has been read of the report, which must outlive the comparison.
  explicit ReportComparison(FoundReport& found) : found_(found) {}

  /// The next line of the derived report, without its end; every line of it ends with CR LF.
  void expect(std::string_view line);
  /// Reads what is left of the report, after the last line of the derived one.
  void finish();
  /// What is wrong with the report that has this name, once it was read. One of other pages, or one of which more than
  /// a few lines differ, is one finding; otherwise each line is.
  std::vector<Finding> findings(const std::string& name) const;

 private:
  using Line = LineDifferences::Line;

  void compare(const Line& found, const Line& expected);

  FoundReport& found_;
  std::size_t expectedBytes_ = 0;  // of the derived report, without its first line
  std::size_t headBytes_ = 0;      // of the first line of the report
  bool hasHead_ = false;
  bool hasEndOfPages_ = false;                     // the report
  std::optional<std::size_t> expectedEndOfPages_;  // the index of the line where the pages end that a head lists
  LineDifferences differences_;                    // after the first line
};

/// Compares a verdict with the derived one, line by line.
std::vector<Finding> compareVerdict(const std::string& name, std::string_view found, std::string_view expected);

}  // namespace kiv::proof
