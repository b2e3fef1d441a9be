#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/programs.h"
#include "platform/user.h"

namespace kiv {

/// Nobody: keeps the messages instead of showing them, and answers questions with No.
class SilentUser : public User {
 public:
  /// In the order in which they came.
  const std::vector<Message>& messages() const { return messages_; }

  Answer show(const Message& message) override {
    messages_.push_back(message);
    return message.buttons == Buttons::ok ? Answer::ok : Answer::no;
  }
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

 private:
  std::vector<Message> messages_;
};

/// Starts nothing, and pretends that it ran successfully.
class NoPrograms : public Programs {
 public:
  std::int32_t runProcess(const std::string& /*commandLine*/, ShowState /*show*/) override { return 0; }
  std::optional<ShellFailure> runInShell(const std::string& /*command*/, WindowStyle /*style*/) override {
    return std::nullopt;
  }
};

}  // namespace kiv
