#include "apps/kivsys/analyze_command.h"

#include <algorithm>
#include <iostream>
#include <optional>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/run_outcome.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

int refuse(const std::string& reason) {
  std::cerr << "kivsys: " << reason << '\n';
  return exit_status::wrongUsage;
}

/// The names file made of the page names on the command line, gone with the run.
class TemporaryNamesFile {
 public:
  TemporaryNamesFile(ConsoleHost& host, const std::vector<std::string>& fullNames) : host_(host) {
    std::string lines;
    for (const std::string& name : fullNames) {
      lines += name + " 1\r\n";
    }
    name_ = host_.makeTemporaryFile(lines);
  }
  TemporaryNamesFile(const TemporaryNamesFile&) = delete;
  TemporaryNamesFile& operator=(const TemporaryNamesFile&) = delete;
  ~TemporaryNamesFile() {
    if (!name_.empty()) {
      host_.deleteFile(name_);
    }
  }

  /// "" when it could not be made.
  const std::string& name() const { return name_; }

 private:
  ConsoleHost& host_;
  std::string name_;
};

/// The name of a file that the user typed, while the program still stands where it was started. One that is not there
/// is left as it was typed, to be looked for in the run's folder.
std::string coreNameOf(ConsoleHost& host, const std::string& typed) {
  const std::string full = host.fullName(typed);
  return host.openInput(full) ? full : ConsoleHost::coreName(typed);
}

bool holdsLineEnd(const std::string& name) {
  return name.find_first_of("\r\n") != std::string::npos;
}

bool runAnalysis(KivSystem& program, const std::string& namesFile, bool allowZeroId) {
  try {
    analyse(program, namesFile, allowZeroId);
    return true;
  } catch (const ProgramEnd& end) {
    return end.exitCode == exit_status::normal;
  }
}

int exitStatusOf(const RunOutcome& outcome, bool tellsQualification) {
  if (!outcome.normalEnd) {
    return exit_status::critical;
  }
  return tellsQualification && !outcome.qualifies() ? exit_status::notQualified : exit_status::normal;
}

/// Prints the outcome and returns the status; one that cannot be printed must not pass for success.
int print(const std::string& text, int status) {
  std::cout << text << std::flush;
  if (std::cout) {
    return status;
  }
  std::cerr << "kivsys: cannot write to standard output\n";
  return exit_status::critical;
}

int analyzeNames(ConsoleHost& host, const std::string& namesFile, const AnalyzeOptions& options) {
  KivSystem program(host);
  const bool normalEnd = runAnalysis(program, namesFile, options.allowZeroId);
  const RunOutcome outcome = outcomeOf(program, host, normalEnd);
  return print(options.json ? asJson(outcome) : asText(outcome), exitStatusOf(outcome, options.exitCode));
}

}  // namespace

int runAnalyze(const AnalyzeOptions& options) {
  ConsoleHost host;
  std::string namesFile = options.names.empty() ? "" : coreNameOf(host, options.names);
  std::vector<std::string> pages;
  for (const std::string& typed : options.pages) {
    for (const std::string& page : ConsoleHost::filesMatching(typed)) {
      pages.push_back(host.fullName(page));
    }
  }
  if (std::any_of(pages.begin(), pages.end(), holdsLineEnd)) {
    return refuse("a page file whose name holds a line end cannot be listed in a names file");
  }
  if (!options.folder.empty() && !host.enterFolder(options.folder)) {
    return refuse("cannot enter the folder " + options.folder);
  }
  std::optional<TemporaryNamesFile> temporary;
  if (options.names.empty()) {
    namesFile = temporary.emplace(host, pages).name();
    if (namesFile.empty()) {
      std::cerr << "kivsys: cannot make a names file in the folder for temporary files\n";
      return exit_status::critical;
    }
  }
  return analyzeNames(host, namesFile, options);
}

int runSiblingCall(const std::string& commandLine) {
  ConsoleHost host;
  KivSystem program(host);
  bool normalEnd = false;
  try {
    Form_Load(program, commandLine);
  } catch (const ProgramEnd& end) {
    normalEnd = end.exitCode == exit_status::normal;
  }
  const RunOutcome outcome = outcomeOf(program, host, normalEnd);
  return print(asText(outcome), exitStatusOf(outcome, false));
}

}  // namespace kiv
