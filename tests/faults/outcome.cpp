#include "tests/faults/outcome.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace kiv::test {
namespace {

constexpr const char* report = "KivSystem2.TXT";
constexpr const char* reportOnceMore = "KivSystem2.txt";  // as the count of the instruments calls it
constexpr const char* verdict = "KivSystem1.TXT";
constexpr const char* notWritten = "Open of output MUS file failed. Hit OK to terminate.";

/// What a page is opened for, from the first time to the last.
enum class Opened { toBeThere, toBeAnalyzed, toBeConverted, toBeSorted };

const std::vector<Opened>& openingsOfAPage(RunKind kind) {
  using enum Opened;
  static const std::vector<Opened> ofAnalysis = {toBeThere, toBeAnalyzed};
  static const std::vector<Opened> ofPanel = {toBeThere, toBeThere, toBeAnalyzed, toBeConverted};
  static const std::vector<Opened> ofSort = {toBeThere, toBeSorted};
  switch (kind) {
    case RunKind::analysis:
      return ofAnalysis;
    case RunKind::panel:
      return ofPanel;
    case RunKind::sort:
      break;
  }
  return ofSort;
}

bool isPage(const std::string& name) {
  return std::find(groupPages().begin(), groupPages().end(), name) != groupPages().end();
}

/// A call that fails, and what the run does then.
class FailedCall {
 public:
  FailedCall(const Undisturbed& run, std::size_t call, InjectedFault fault) : run_(run), at_(call), fault_(fault) {}

  /// Nullopt when it makes no difference.
  std::optional<Outcome> outcome() const;

 private:
  const FileCall& call() const { return run_.calls[at_]; }
  const std::string& name() const { return call().name; }
  std::ptrdiff_t timesOpened() const;
  std::ptrdiff_t piecesRead() const;
  /// Of a name or the names file: the panel loads them when it starts, and once more for Analyze.
  bool panelStarts() const { return run_.kind == RunKind::panel && timesOpened() == 1; }
  std::string folder() const { return fault_.persists ? "" : "C:\\KIV"; }

  std::optional<Outcome> ofOpening() const;
  std::optional<Outcome> ofReading() const;
  std::optional<Outcome> ofCreating() const;
  std::optional<Outcome> ofPage() const;
  Outcome ofMissingPage(std::vector<Message> messages, const std::string& page) const;
  Outcome ofCutNames() const;
  Outcome without(const std::string& question) const;
  Outcome nothingSelected(std::vector<Message> messages, bool dropsNamesFile) const;
  Outcome defaultFolder(const std::string& text) const;
  Outcome ends(std::vector<Message> messages, int exitCode) const;
  Outcome fatal(const std::string& text) const { return ends({critical(text)}, 1); }
  Outcome runTimeError(const std::string& text) const { return fatal("Run-time error: " + text + "\r\n" + name()); }
  std::vector<Message> shown() const {
    return {run_.messages.begin(), run_.messages.begin() + static_cast<std::ptrdiff_t>(call().messagesBefore)};
  }

  const Undisturbed& run_;
  std::size_t at_;
  InjectedFault fault_;
};

std::ptrdiff_t FailedCall::timesOpened() const {
  const auto last = run_.calls.begin() + static_cast<std::ptrdiff_t>(at_) + 1;
  return std::count_if(run_.calls.begin(), last, [&](const FileCall& other) {
    return other.operation == Operation::openInput && other.name == name();
  });
}

std::ptrdiff_t FailedCall::piecesRead() const {
  std::ptrdiff_t pieces = 0;
  for (std::size_t i = at_; i-- > 0;) {
    if (run_.calls[i].name == name()) {
      if (run_.calls[i].operation == Operation::openInput) {
        break;
      }
      ++pieces;
    }
  }
  return pieces;
}

Outcome FailedCall::ends(std::vector<Message> messages, int exitCode) const {
  std::vector<Message> all = shown();
  all.insert(all.end(), messages.begin(), messages.end());
  return {all, exitCode};
}

std::optional<Outcome> FailedCall::outcome() const {
  const bool fails = fault_.failure == Failure::fails;
  switch (call().operation) {
    case Operation::write:
      return runTimeError(noSpace);
    case Operation::replaceFile:
      return fatal(notWritten);
    case Operation::openInput:
      return fails ? ofOpening() : std::nullopt;
    case Operation::read:
      return fails ? ofReading() : std::nullopt;
    case Operation::openOutput:
      return fails ? ofCreating() : std::nullopt;
    case Operation::currentFolder:
      return fails ? std::optional(fatal("File does not open: \\KIVPROJ.PRO")) : std::nullopt;
    case Operation::deleteFile:  // of old results
    case Operation::listFolder:  // for a tooltip
      break;
  }
  return std::nullopt;
}

std::optional<Outcome> FailedCall::ofCreating() const {
  if (name() == report) {
    return fatal("Failed to create report file: KivSystem2.TXT");
  }
  return name() == verdict ? fatal("Failed to create file KivSystem1.TXT") : ends({}, 0);
}

std::optional<Outcome> FailedCall::ofOpening() const {
  if (name() == namesFile) {
    return nothingSelected({}, false);
  }
  if (name() == settingsFile) {
    return fatal("File does not open: C:\\KIV\\KIVPROJ.PRO");
  }
  if (name() == "C:\\KIV\\KIVFOLDR.EXE") {
    return defaultFolder("Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.");
  }
  if (name() == answerFile) {
    return defaultFolder("Failed to open output folder");
  }
  if (name() == report) {
    return fatal(timesOpened() == 1 ? "Could not open file KivSystem2.TXT for input."
                                    : "Failed to open file KivSystem2.TXT");
  }
  if (name() == verdict || name() == reportOnceMore) {
    return fatal("Failed to open " + name() + " for input.");
  }
  if (name() == "C:\\OUT\\WORK0001.MUS") {
    return fault_.persists ? fatal(notWritten) : without("File exists: " + name() + "\r\n\r\nOverwrite?");
  }
  return isPage(name()) ? ofPage() : std::nullopt;
}

std::optional<Outcome> FailedCall::ofReading() const {
  if (name() == namesFile) {
    if (piecesRead() == 0) {
      return nothingSelected({}, false);
    }
    return piecesRead() == 1 ? std::optional(ofCutNames()) : std::nullopt;
  }
  if (name() == answerFile) {
    return piecesRead() == 0 ? std::optional(defaultFolder("Failed to open output folder")) : std::nullopt;
  }
  return isPage(name()) ? ofPage() : runTimeError("Device I/O error");
}

std::optional<Outcome> FailedCall::ofPage() const {
  switch (openingsOfAPage(run_.kind).at(static_cast<std::size_t>(timesOpened() - 1))) {
    case Opened::toBeThere:
      return ofMissingPage(shown(), name());
    case Opened::toBeAnalyzed:
      if (call().operation == Operation::openInput) {
        return fatal("File naming problem: " + name() + "\r\nCurrent folder = " + folder() +
                     "\r\nFilenames required for this program must have this format:\r\n\r\n"
                     "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\nRename your input.");
      }
      [[fallthrough]];
    case Opened::toBeConverted:
      return fatal("Structural error in MUS file: " + name() +
                   "\r\nTry to recover with KivValid/KivRecover.\r\nCurrent folder = " + folder() +
                   "\r\nItem number = 0");
    case Opened::toBeSorted:
      break;
  }
  return fatal("Structural error in MUS file. Try to recover with KivValid/KivRecover.");
}

/// The names file is deleted, unless it cannot be deleted: then its names up to the missing one count.
Outcome FailedCall::ofMissingPage(std::vector<Message> messages, const std::string& page) const {
  messages.push_back(information("Name in Names file [" + page +
                                 "] refers to non-existing or unaccessable file\r\n"
                                 "Names file will be deleted after view."));
  if (!fault_.persists) {
    return nothingSelected(std::move(messages), true);
  }
  messages.push_back(information("Failed to erase " + namesFile));
  if (panelStarts()) {
    return {messages, std::nullopt};
  }
  messages.push_back(critical(run_.kind == RunKind::sort
                                  ? "Structural error in MUS file. Try to recover with KivValid/KivRecover."
                                  : "Failed to create report file: KivSystem2.TXT"));
  return {messages, 1};
}

/// The names before the failure are used, and what is left of the line in which it came is no name.
Outcome FailedCall::ofCutNames() const {
  std::vector<Message> messages = shown();
  messages.push_back(
      information("Filename [C:\\M\\X002B.] in Names file not terminated by ' 1'. Hit enter to continue."));
  if (fault_.persists) {
    return ofMissingPage(messages, groupPages()[1]);
  }
  if (panelStarts()) {
    messages.insert(messages.end(), run_.messages.begin(), run_.messages.end());
    return {messages, run_.end};
  }
  const Undisturbed cut(run_.kind, Results::ofFewerNames);
  const std::ptrdiff_t atTheStart = run_.kind == RunKind::panel ? 1 : 0;  // the panel says the same when it starts
  messages.insert(messages.end(), cut.messages.begin() + atTheStart + 1, cut.messages.end());
  Outcome outcome{messages, cut.end};
  outcome.results = Results::ofFewerNames;
  return outcome;
}

Outcome FailedCall::without(const std::string& question) const {
  Outcome outcome{run_.messages, run_.end};
  std::erase_if(outcome.messages, [&](const Message& message) { return message.text == question; });
  return outcome;
}

Outcome FailedCall::nothingSelected(std::vector<Message> messages, bool dropsNamesFile) const {
  std::optional<int> end;
  if (run_.kind == RunKind::sort) {
    messages.push_back(information("Sort finished"));
  } else if (run_.kind == RunKind::analysis || timesOpened() == 2) {
    messages.push_back(critical("No input files: " + namesFile));
    end = run_.kind == RunKind::analysis ? std::optional(1) : std::nullopt;
  }
  Outcome outcome{messages, end};
  outcome.dropsNamesFile = dropsNamesFile;
  return outcome;
}

Outcome FailedCall::defaultFolder(const std::string& text) const {
  std::vector<Message> messages = shown();
  messages.push_back(information(text));
  if (fault_.persists) {
    messages.push_back(critical("Failed to open file KivSystem2.TXT"));
    return {messages, 1};
  }
  for (std::size_t i = call().messagesBefore; i < run_.messages.size(); ++i) {
    Message message = run_.messages[i];
    for (std::size_t at = 0; (at = message.text.find("\\OUT\\")) != std::string::npos;) {
      message.text.replace(at, 5, "\\M\\");
    }
    messages.push_back(message);
  }
  Outcome outcome{messages, run_.end};
  outcome.results = Results::inPagesFolder;
  return outcome;
}

}  // namespace

Undisturbed::Undisturbed(RunKind ofKind, Results results) : kind(ofKind) {
  FailingHost host;
  prepareDisk(host);
  if (results == Results::ofFewerNames) {
    host.addFile(namesFile, host.file(namesFile).substr(0, largestRead));
  } else if (results == Results::inPagesFolder) {
    host.addFile(answerFile, "");
  }
  before = host.files();
  end = perform(kind, host);
  calls = host.failing.calls;
  messages = host.messages;
  after = host.files();
}

Outcome outcomeAfter(const Undisturbed& run, InjectedFault fault) {
  for (auto call = static_cast<std::size_t>(fault.call - 1); call < run.calls.size(); ++call) {
    if (auto outcome = FailedCall(run, call, fault).outcome()) {
      return *outcome;
    }
    if (!fault.persists) {
      break;
    }
  }
  return {run.messages, run.end};
}

}  // namespace kiv::test
