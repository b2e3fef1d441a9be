#pragma once

#include <string>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/page_validation.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The pages that a run goes on without, told on the console, and a names file of the others.
class PagesToGoOn {
 public:
  /// Judges the pages of the names file and shows the message of each that is bad. The host must outlive this.
  PagesToGoOn(ConsoleHost& host, const std::string& namesFile);
  PagesToGoOn(const PagesToGoOn&) = delete;
  PagesToGoOn& operator=(const PagesToGoOn&) = delete;
  ~PagesToGoOn();

  /// The names file to go on with: the given one when no page is bad. "" when none is left, or it cannot be made.
  const std::string& namesFile() const { return namesFile_; }
  bool anySkipped() const { return !judgement_.skipped.empty(); }
  bool anyLeft() const { return judgement_.pages > 0; }
  /// The files that the messages shown are about.
  std::vector<std::string> filesOfMessages() const;
  /// "12 pages analysed, 2 skipped: X2.MUS, X7.MUS"
  std::string summary() const;
  Json skippedJson() const;
  std::size_t pages() const { return judgement_.pages; }

 private:
  ConsoleHost& host_;
  PageJudgement judgement_;
  std::string temporary_;
  std::string namesFile_;
};

}  // namespace kiv
