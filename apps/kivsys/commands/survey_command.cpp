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
#include "apps/kivsys/survey/survey_state.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/stop_signals.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

constexpr std::string_view outOfMemory = "out of memory";

/// The analysis of a piece, and what the system did not have for it: memory or open files. "" when it had all.
struct Analyzed {
  PieceFindings findings;
  std::string lack;
};

/// A piece without an analysis, for which the system lacks something.
Analyzed lacking(std::string_view lack, Machine& machine, const std::vector<std::string>& pages) {
  Analyzed analyzed{{}, std::string(lack)};
  analyzed.findings.files = pages.size();
  analyzed.findings.pages = countPages(machine, pages);
  analyzed.findings.problems.emplace_back(lack);
  analyzed.findings.stopped = lack;
  return analyzed;
}

void inUtf8(PieceFindings& findings) {
  for (std::string& problem : findings.problems) {
    problem = NativeSystem::toUtf8(problem);
  }
  findings.stopped = NativeSystem::toUtf8(findings.stopped);
  for (auto& [id, name] : findings.names) {
    name = NativeSystem::toUtf8(name);
  }
  for (BadPage& bad : findings.badPages) {
    for (std::string& file : bad.files) {
      file = NativeSystem::toUtf8(file);
    }
    bad.reason = NativeSystem::toUtf8(bad.reason);
    bad.shown = NativeSystem::toUtf8(bad.shown);
  }
}

/// A running survey. The workers are threads: an analysis that reads the disk and writes to memory shares nothing with
/// another one, not even a current folder.
class Survey {
 public:
  Survey(const SurveyOptions& options, const std::vector<LibraryPiece>& pieces, ConsoleUser& user, SurveyState& state)
      : options_(options),
        pieces_(pieces),
        user_(user),
        state_(state),
        lines_(options.format, pieces),
        findings_(pieces.size()) {}

  int run();

 private:
  void loadKnown();
  void work();
  Analyzed analyze(NativeSystem& system, std::size_t piece);
  void startWorkers();
  void finish(std::size_t piece, Analyzed analyzed);
  void print(const std::string& text);
  void showProgress();
  bool isAnyUnusable() const;

  const SurveyOptions& options_;
  const std::vector<LibraryPiece>& pieces_;
  ConsoleUser& user_;
  SurveyState& state_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex mutex_;  // guards all below, the user and the state
  SurveyLines lines_;
  std::vector<std::optional<PieceFindings>> findings_;
  std::size_t finished_ = 0;
  std::size_t printed_ = 0;
  std::string lack_;  // of the first piece that lacked something
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

/// A piece that takes more memory or open files than there are has that as its only problem.
Analyzed Survey::analyze(NativeSystem& system, std::size_t piece) {
  const std::vector<std::string>& pages = pieces_[piece].pages;
  try {
    Analyzed analyzed{surveyPiece(system, system, pages, options_.keepGoing ? BadPages::skipped : BadPages::end), ""};
    inUtf8(analyzed.findings);
    return analyzed;
  } catch (const std::bad_alloc&) {
    return lacking(outOfMemory, system, pages);
  } catch (const std::system_error& failure) {
    return lacking(failure.code().message(), system, pages);
  }
}

void Survey::work() {
  NativeSystem system;
  for (std::size_t piece = next_++; piece < pieces_.size() && stopSignal() == 0 && !memoryLost_; piece = next_++) {
    if (findings_[piece]) {
      continue;  // an earlier run has analyzed it
    }
    try {
      finish(piece, analyze(system, piece));
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
  if (!std::cout) {
    printError("cannot write to standard output");
    return exit_status::critical;
  }
  if (stateLost_) {
    printError("cannot write to " + options_.resume);
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

/// The file to use as the state. One that is there in another case only is that file.
std::string stateFile(ConsoleSystem& system, const std::string& typed) {
  const std::string found = system.diskName(system.fullName(typed));
  return kindOf(typed) == PathKind::missing && kindOf(found) != PathKind::missing ? found : typed;
}

/// Opens the file of the state, which is none of the pages. Returns why it cannot be used.
std::optional<StateRefusal> openState(ConsoleSystem& system, const SurveyOptions& options, const Library& library,
                                      SurveyState& state) {
  if (options.resume == standardOutput) {
    return StateRefusal{exit_status::wrongUsage,
                        "the state of a survey cannot be kept on standard output, which has its lines"};
  }
  const std::string file = stateFile(system, options.resume);
  if (system.upperCase(file).ends_with(".MUS")) {
    return StateRefusal{exit_status::wrongUsage, file + " has the name of a page; name another file"};
  }
  if (const auto identity = identityOf(file)) {
    for (const LibraryPiece& piece : library.pieces) {
      for (const std::string& page : piece.pages) {
        if (identityOf(system.diskName(page)) == identity) {
          return StateRefusal{exit_status::wrongUsage, file + " is a page of the library; name another file"};
        }
      }
    }
  }
  return state.open(file, options.folders);
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
  const Library library = walkLibrary(console.system(), options.folders);
  SurveyState state;
  if (!options.resume.empty()) {
    if (const auto refusal = openState(console.system(), options, library, state)) {
      printError(refusal->reason);
      return refusal->status;
    }
  }
  for (const std::string& folder : library.unreadable) {
    printError("cannot list the folder " + folder);
  }
  for (const std::string& page : options.quiet ? std::vector<std::string>() : library.leftOut) {
    printError("note: " + page + " is left out, as the damaged page is there, too");
  }
  const int status = Survey(options, library.pieces, console.user(), state).run();
  return status == exit_status::normal && !library.unreadable.empty() ? exit_status::critical : status;
}

}  // namespace kiv
