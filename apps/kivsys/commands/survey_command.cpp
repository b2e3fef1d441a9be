#include "apps/kivsys/commands/survey_command.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <new>
#include <string_view>
#include <system_error>
#include <thread>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/safety/output_file.h"
#include "apps/kivsys/selection/selection.h"
#include "apps/kivsys/survey/analyzed_piece.h"
#include "apps/kivsys/survey/open_state.h"
#include "apps/kivsys/survey/survey_reports.h"
#include "apps/kivsys/survey/survey_state.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/stop_signals.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

/// A running survey. The workers are threads: an analysis that reads the disk and writes to memory shares nothing with
/// another one, not even a current folder.
class Survey {
 public:
  Survey(const SurveyOptions& options, const std::vector<LibraryPiece>& pieces, ConsoleUser& user, SurveyState& state,
         SurveyReports& reports)
      : options_(options),
        pieces_(pieces),
        user_(user),
        state_(state),
        reports_(reports),
        lines_(options.format, pieces),
        findings_(pieces.size()) {}

  int run();

 private:
  void loadKnown();
  void work();
  void startWorkers();
  void finish(std::size_t piece, Analyzed analyzed);
  void print(const std::string& text);
  void showProgress();
  void report(NativeSystem& system, std::size_t piece, bool isNew);
  int end(bool stopped);
  bool isAnyUnusable() const;

  const SurveyOptions& options_;
  const std::vector<LibraryPiece>& pieces_;
  ConsoleUser& user_;
  SurveyState& state_;
  SurveyReports& reports_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex mutex_;  // guards all below, the user and the state
  SurveyLines lines_;
  std::vector<std::optional<PieceFindings>> findings_;
  std::size_t finished_ = 0;
  std::size_t printed_ = 0;
  std::string lack_;           // of the first piece that lacked something
  std::string reportFailure_;  // of the first report that was not written
  bool stateLost_ = false;
  std::atomic<bool> memoryLost_ = false;
};

void Survey::print(const std::string& text) {
  user_.clearProgress();
  std::cout << text << std::flush;
}

void Survey::showProgress() {
  user_.showProgress(static_cast<int>(finished_), static_cast<int>(pieces_.size()), "pieces");
}

/// Prints the lines in the order of the pieces, up to the first unfinished one.
void Survey::finish(std::size_t piece, Analyzed analyzed) {
  const std::lock_guard lock(mutex_);
  if (!analyzed.lack.empty()) {
    lack_ = lack_.empty() ? analyzed.lack : lack_;                               // another run tries again
  } else if (analyzed.findings.badPages.empty() && analyzed.findings.systems) {  // what is wrong may not last
    stateLost_ = !state_.keep(pieces_[piece], analyzed.findings) || stateLost_;
  }
  findings_[piece] = std::move(analyzed.findings);
  ++finished_;
  for (; printed_ < pieces_.size() && findings_[printed_]; ++printed_) {
    print(lines_.line(pieces_[printed_], *findings_[printed_]));
  }
  showProgress();
}

/// Writes the report of a piece, if it is wanted.
void Survey::report(NativeSystem& system, std::size_t piece, bool isNew) {
  if (!reports_.needsReport(pieces_[piece], isNew)) {
    return;
  }
  const auto failure = reports_.write(system, pieces_[piece]);
  const std::lock_guard lock(mutex_);
  if (failure && reportFailure_.empty()) {
    reportFailure_ = *failure;
  }
}

void Survey::work() {
  NativeSystem system;
  for (std::size_t piece = next_++; piece < pieces_.size() && stopSignal() == 0 && !memoryLost_; piece = next_++) {
    try {
      if (findings_[piece]) {  // an earlier run has analyzed it
        report(system, piece, false);
        continue;
      }
      Analyzed analyzed =
          analyzePiece(system, pieces_[piece].pages, options_.keepGoing ? BadPages::skipped : BadPages::end);
      if (analyzed.findings.stopped.empty()) {  // what was not analyzed has no report
        report(system, piece, true);
      }
      finish(piece, std::move(analyzed));
    } catch (const std::bad_alloc&) {
      memoryLost_ = true;
    }
  }
}

/// As many workers as the system has threads for; without any, the work is done here.
void Survey::startWorkers() {
  const std::size_t cores = std::max(1U, options_.jobs == 0 ? std::thread::hardware_concurrency() : options_.jobs);
  std::vector<std::jthread> workers;
  try {
    for (std::size_t i = 0; i < std::min(cores, pieces_.size()); ++i) {
      workers.emplace_back([this] { work(); });
    }
  } catch (const std::system_error&) {
    work();
  }
}

void Survey::loadKnown() {
  for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
    findings_[piece] = state_.find(pieces_[piece]);
    finished_ += findings_[piece] ? 1U : 0U;
  }
}

/// Whether a piece needs a conversion, or could not be analyzed as a whole.
bool Survey::isAnyUnusable() const {
  return std::any_of(findings_.begin(), findings_.end(), [](const std::optional<PieceFindings>& findings) {
    return findings && (findings->isBad() || findings->needsConversion().value_or(false));
  });
}

int Survey::run() {
  print(lines_.head());
  loadKnown();
  showProgress();  // known pieces are no work of this run
  startWorkers();
  const bool stopped = finished_ < pieces_.size();
  for (; printed_ < pieces_.size(); ++printed_) {
    if (findings_[printed_]) {
      print(lines_.line(pieces_[printed_], *findings_[printed_]));
    }
  }
  print(lines_.end(findings_, stopped));
  stateLost_ = !state_.flush() || stateLost_;
  return end(stopped);
}

/// Writes the page of the library, and says what has failed. Returns the exit status.
int Survey::end(bool stopped) {
  if (!options_.html.empty()) {
    if (const auto failure = reports_.writePage(pieces_, findings_, options_.folders)) {
      reportFailure_ = *failure;
    }
  }
  if (!std::cout) {
    printError("cannot write to standard output");
    return exit_status::critical;
  }
  if (stateLost_) {
    printError("cannot write to " + options_.resume + ": " + state_.failure());
    return exit_status::critical;
  }
  if (!reportFailure_.empty()) {
    printError(reportFailure_);
    return exit_status::critical;
  }
  if (!lack_.empty() || memoryLost_) {
    printError(lack_.empty() ? outOfMemory : lack_);
    return exit_status::critical;
  }
  if (stopped) {
    printError("interrupted with " + std::to_string(finished_) + " of " + std::to_string(pieces_.size()) + " pieces");
    return exit_status::afterSignal(stopSignal());
  }
  return options_.exitCode && isAnyUnusable() ? exit_status::notUsable : exit_status::normal;
}

void sayWhatIsLeftOut(const Library& library, bool quiet) {
  for (const std::string& folder : library.unreadable) {
    printError("cannot list the folder " + folder);
  }
  for (const std::string& name : library.unusable) {
    printError("a folder or page whose name holds a backslash cannot be used: " + name);
  }
  for (const std::string& words : quiet ? std::vector<std::string>() : library.leftOut) {
    printError("note: " + words);
  }
}

}  // namespace

int runSurvey(const SurveyOptions& options) {
  for (const std::string& folder : options.folders) {
    std::error_code failure;
    if (!std::filesystem::is_directory(folder, failure)) {
      printError("cannot enter the folder " + folder);
      return exit_status::wrongUsage;
    }
  }
  ConsoleHost console;
  if (options.quiet) {
    console.user().beQuiet();
  }
  if (options.format == SurveyFormat::json) {
    console.user().hideProgress();
  }
  noteStopSignals(SecondSignal::endsProgram);
  finishWhenStopped();  // the lines and the page of the finished pieces are still written
  const Library library = walkLibrary(console.system(), options.folders);
  SurveyReports reports(console.system(), options.html, options.reports);
  if (const auto reasons = reports.refusals(library, options.resume); !reasons.empty()) {
    return refuse(reasons);
  }
  SurveyState state;
  if (!options.resume.empty()) {
    if (const auto refusal = openState(console.system(), options, library, state)) {
      printError(refusal->reason);
      return refusal->status;
    }
  }
  if (const auto failure = reports.prepare(console.user())) {
    printError(*failure);
    return exit_status::critical;
  }
  sayWhatIsLeftOut(library, options.quiet);
  const bool isComplete = library.unreadable.empty() && library.unusable.empty();
  const int status = Survey(options, library.pieces, console.user(), state, reports).run();
  return status == exit_status::normal && !isComplete ? exit_status::critical : status;
}

}  // namespace kiv
