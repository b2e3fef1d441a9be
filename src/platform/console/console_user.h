#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/console/message_words.h"
#include "platform/console/native_system.h"
#include "platform/console/progress_line.h"
#include "platform/user.h"

namespace kiv {

/// A message that the run has shown, and how it was answered.
struct ShownMessage {
  Message message;
  Answer answer = Answer::ok;

  bool operator==(const ShownMessage&) const = default;
};

/// The user at a console: messages go to standard error with their severity and are kept, questions are asked on the
/// terminal, where one answer can stand for all, and answered No where there is none; long runs show their progress
/// where standard error is a terminal.
class ConsoleUser : public User {
 public:
  /// Text files are read through the files, which must outlive this object.
  explicit ConsoleUser(Files& files) : files_(files), terminal_(NativeSystem::errorIsTerminal()) {}

  /// From now on, messages are printed in the console's own words, with the names that users know files by, and
  /// with the reason when a file could not be written. The messages that are kept stay as they are. The second namer
  /// gives the path under which the disk has a file.
  void useConsoleWords(FileNamer nameOf, FileNamer pathOf, std::function<std::string()> writeFailure) {
    nameOf_ = std::move(nameOf);
    pathOf_ = std::move(pathOf);
    writeFailure_ = std::move(writeFailure);
  }
  /// The name by which the user knows a file that the core names.
  std::string nameOf(const std::string& coreName) const { return nameOf_ ? nameOf_(coreName) : coreName; }
  /// From now on only critical messages and questions are printed, without what to do next, and no progress; all
  /// messages are kept.
  void beQuiet() { quiet_ = true; }
  bool isQuiet() const { return quiet_; }
  /// Prints lines on standard error that are no message, unless the user wants none.
  void printNotes(std::string_view lines);

  Answer show(const Message& message) override;
  bool showText(const std::string& name) override;
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int done, int all, std::string_view plural) override;

  /// From now on no progress is shown.
  void hideProgress() { showsProgress_ = false; }
  /// Clears the line of the progress before other lines are printed; the next progress is shown again.
  void clearProgress();
  /// How far unfinished work has come: "12 of 40 pages"; "" when there is none.
  std::string reached() const { return progress_.reached(); }

  /// In the order in which they were shown.
  const std::vector<ShownMessage>& messages() const { return messages_; }

 private:
  Answer ask();
  bool isPrinted(const Message& message) const;

  Files& files_;
  FileNamer nameOf_;  // none: messages are printed as they are
  FileNamer pathOf_;
  std::function<std::string()> writeFailure_;
  bool terminal_;
  bool quiet_ = false;
  bool showsProgress_ = true;
  bool progressShown_ = false;
  bool answersExplained_ = false;
  ProgressLine progress_;
  std::optional<Answer> standingAnswer_;  // to all further questions
  std::vector<ShownMessage> messages_;
};

}  // namespace kiv
