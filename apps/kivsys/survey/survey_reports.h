#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "apps/kivsys/survey/library_walk.h"
#include "platform/console/console_system.h"
#include "platform/console/console_user.h"
#include "report_page/gather_report.h"
#include "survey/survey.h"

namespace kiv {

/// The HTML pages of a survey: that of the library, and those of its pieces.
class SurveyReports {
 public:
  /// The page and the folder of the reports as they were typed; "" for none.
  SurveyReports(ConsoleSystem& system, std::string page, std::string folder)
      : system_(system), page_(std::move(page)), folder_(std::move(folder)) {}

  /// Why they cannot be written: one is a page of the library, another one of them, the file that keeps the state of
  /// the survey ("" for none), or a file that is no report. None: they can.
  std::vector<std::string> refusals(const Library& library, const std::string& state);
  /// Makes the folder of the reports when it is missing. Returns why it cannot be made.
  [[nodiscard]] std::optional<std::string> prepare(ConsoleUser& user);
  /// Whether the piece still needs its report: there is none of its pages as they are, or its findings are new.
  bool needsReport(const LibraryPiece& piece, bool isNew) const;
  /// Analyzes the piece and writes its report. Many of these can run at once, each on a system of its own. Returns why
  /// it cannot be written.
  [[nodiscard]] std::optional<std::string> write(NativeSystem& system, const LibraryPiece& piece) const;
  /// Writes the page of the library; a piece without findings is left out. Returns why it cannot be written.
  [[nodiscard]] std::optional<std::string> writePage(const std::vector<LibraryPiece>& pieces,
                                                     const std::vector<std::optional<PieceFindings>>& findings,
                                                     const std::vector<std::string>& folders);

 private:
  static std::string nameOf(const LibraryPiece& piece);
  report::CommandParts commandsFor(const LibraryPiece& piece) const;
  std::optional<std::string> refusalOfNames(const Library& library, const std::string& state) const;
  bool hasReport(const LibraryPiece& piece) const;
  std::string fileOf(const LibraryPiece& piece) const;
  std::string linkOf(const LibraryPiece& piece) const;

  ConsoleSystem& system_;
  std::string page_;
  std::string folder_;
};

}  // namespace kiv
