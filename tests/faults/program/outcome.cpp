#include "tests/faults/program/outcome.h"

#include <algorithm>
#include <sstream>

namespace kiv::test {
namespace {

bool endsWithRandom(const std::string& file, const std::string& start) {
  const std::string name = file.substr(file.rfind('/') + 1);
  const std::string random = "XXXXXX";
  return name.starts_with(start) && name.size() == start.size() + random.size();
}

std::string baseOf(const std::string& file) {
  return file.substr(file.rfind('/') + 1);
}

std::string withBackslashes(std::string file) {
  std::replace(file.begin(), file.end(), '/', '\\');
  return file;
}

std::string capitals(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return text;
}

Outcome critical(const std::string& text) {
  return "critical: " + text + "\n";
}

/// The expected outcome when one of the calls fails.
class Failure {
 public:
  Failure(const std::vector<Call>& calls, std::size_t failing, bool converts, std::string errorText)
      : calls_(calls), at_(failing), converts_(converts), errorText_(std::move(errorText)) {}

  Outcome outcome() const;

 private:
  const Call& call() const { return calls_[at_]; }
  std::string base() const { return baseOf(call().file); }
  std::ptrdiff_t timesOpened(const std::string& name) const;
  std::ptrdiff_t timesOpened() const { return timesOpened(base()); }
  bool isFirstRead() const { return calls_[at_ - 1].name == "open" && calls_[at_ - 1].file == call().file; }
  /// Whether the run has its results, and reads again only to print where the layouts differ.
  bool explains() const;
  /// The program's own name of its names file.
  std::string namesFile() const;
  std::string folder() const;

  Outcome ofOpening() const;
  Outcome ofReading() const;
  Outcome ofPage() const;
  Outcome ofWriting() const;
  Outcome ofFolder() const;

  const std::vector<Call>& calls_;
  std::size_t at_;
  bool converts_;
  std::string errorText_;
};

std::ptrdiff_t Failure::timesOpened(const std::string& name) const {
  const auto last = calls_.begin() + static_cast<std::ptrdiff_t>(at_) + 1;
  return std::count_if(calls_.begin(), last,
                       [&](const Call& other) { return other.name == "open" && baseOf(other.file) == name; });
}

bool Failure::explains() const {
  return !converts_ && std::none_of(calls_.begin() + static_cast<std::ptrdiff_t>(at_), calls_.end(),
                                    [](const Call& later) { return baseOf(later.file).starts_with("KivSystem"); });
}

std::string Failure::namesFile() const {
  const auto created =
      std::find_if(calls_.begin(), calls_.end(), [](const Call& other) { return isOwnNamesFile(other.file); });
  return withBackslashes(created->file);
}

std::string Failure::folder() const {
  const std::string names = namesFile();
  return names.substr(0, names.rfind("\\tmp\\")) + "\\run";
}

Outcome Failure::outcome() const {
  const std::string& name = call().name;
  if (name == "unlink") {
    return std::nullopt;  // of results of an earlier run, and of the program's own names file
  }
  if (explains()) {
    return std::nullopt;
  }
  if (call().file == "." || call().file.ends_with('/')) {
    return ofFolder();
  }
  if (name == "open") {
    return ofOpening();
  }
  if (name == "read") {
    return ofReading();
  }
  return ofWriting();
}

/// Folders are opened for their locks, which a run can do without, and at the end to be flushed.
Outcome Failure::ofFolder() const {
  const bool isLock = std::none_of(calls_.begin(), calls_.begin() + static_cast<std::ptrdiff_t>(at_),
                                   [](const Call& earlier) { return earlier.name == "mkstemp"; });
  const bool isUnreadable = call().name == "open" && errorText_ == "Permission denied";
  if (isLock || isUnreadable) {
    return std::nullopt;
  }
  return "kivsys: cannot write to the disk: " + call().file + ": " + errorText_ + "\n";
}

Outcome Failure::ofWriting() const {
  if (isOwnNamesFile(call().file)) {
    return "kivsys: cannot make a names file in the folder for temporary files\n";
  }
  if (base() == "KivSystem2.TXT" || base() == "KivSystem1.TXT") {
    if (call().name == "write") {
      return critical("Run-time error: " + errorText_ + "\n  " + base());
    }
    return critical(base() == "KivSystem2.TXT" ? "Failed to create report file: KivSystem2.TXT"
                                               : "Failed to create file KivSystem1.TXT");
  }
  return critical("Open of output MUS file failed. Hit OK to terminate.");
}

Outcome Failure::ofOpening() const {
  if (isOwnNamesFile(call().file)) {
    // It is opened first to look at its size only.
    return timesOpened() == 1 ? std::nullopt : critical("No input files: " + namesFile());
  }
  if (base() == "KivSystem1.TXT") {
    return critical("Failed to open KivSystem1.TXT for input.");
  }
  if (base().starts_with("WORK")) {
    return std::nullopt;  // of a result that is to be replaced
  }
  if (base() == "KivSystem2.txt") {
    return critical("Failed to open KivSystem2.txt for input.");  // as the program spells it there
  }
  if (base() != "KivSystem2.TXT") {
    return ofPage();
  }
  if (timesOpened() == 1) {
    return critical("Could not open file KivSystem2.TXT for input.");
  }
  return critical(timesOpened() == 3 ? "Failed to open file KivSystem2.TXT"
                                     : "Failed to open KivSystem2.txt for input.");
}

Outcome Failure::ofReading() const {
  if (isOwnNamesFile(call().file)) {
    return isFirstRead() ? critical("No input files: " + namesFile()) : std::nullopt;
  }
  if (base().ends_with(".MUS")) {
    return ofPage();
  }
  const bool counts = converts_ && base() == "KivSystem2.TXT" && timesOpened() == 2;
  return critical("Run-time error: Device I/O error\n  " + (counts ? "KivSystem2.txt" : base()));
}

Outcome Failure::ofPage() const {
  const std::string page = capitals(withBackslashes(call().file));
  if (timesOpened() == 1) {
    return critical("No input files: " + namesFile());
  }
  if (timesOpened() == 2 && call().name != "read") {
    return critical("File naming problem: " + page + "\n  Current folder = " + folder() +
                    "\n  Filenames required for this program must have this format:\n  \n"
                    "      <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\n  \n  Rename your input.");
  }
  return critical("Structural error in MUS file: " + page +
                  "\n  Try to recover with KivValid/KivRecover.\n  Current folder = " + folder() +
                  "\n  Item number = 0");
}

}  // namespace

std::vector<Call> callsIn(const std::string& log) {
  std::vector<Call> calls;
  std::istringstream lines(log);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t blank = line.find(' ');
    calls.push_back({line.substr(0, blank), line.substr(blank + 1)});
  }
  return calls;
}

bool isOwnNamesFile(const std::string& file) {
  return endsWithRandom(file, "kivsys-");
}

bool isBesideResult(const std::string& file) {
  return baseOf(file).starts_with(".kiv-");  // then the name of the run, if it can be undone, and random characters
}

bool isKept(const std::string& file) {
  return file.find(".kivsys/") != std::string::npos;
}

Outcome outcomeOf(const std::vector<Call>& calls, std::size_t failing, bool converts, const std::string& errorText) {
  return Failure(calls, failing, converts, errorText).outcome();
}

}  // namespace kiv::test
