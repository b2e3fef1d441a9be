#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

  Answer show(const Message& message) override;
  bool showText(const std::string& name) override;
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int done, int all, std::string_view plural) override;

  /// From now on no progress is shown.
  void hideProgress() { showsProgress_ = false; }
  /// How far unfinished work has come: "12 of 40 pages"; "" when there is none.
  std::string reached() const { return progress_.reached(); }

  /// In the order in which they were shown.
  const std::vector<ShownMessage>& messages() const { return messages_; }

 private:
  Answer ask();
  void clearProgress();

  Files& files_;
  bool terminal_;
  bool showsProgress_ = true;
  bool progressShown_ = false;
  ProgressLine progress_;
  std::optional<Answer> standingAnswer_;  // to all further questions
  std::vector<ShownMessage> messages_;
};

}  // namespace kiv
