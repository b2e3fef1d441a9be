#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/console/native_system.h"
#include "platform/host.h"

namespace kiv {

/// A message that the run has shown, and how it was answered.
struct ShownMessage {
  Icon icon = Icon::none;
  std::string text;
  Answer answer = Answer::ok;

  bool operator==(const ShownMessage&) const = default;
};

/// The host without windows: messages go to standard error with their severity and are kept, questions are put to the
/// terminal and answered No where there is none, and long runs tell how far they are where standard error is one.
class ConsoleHost : public NativeSystem {
 public:
  ConsoleHost() : terminal_(errorIsTerminal()) {}

  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  bool showText(const std::string& name) override;
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int done, int all, std::string_view plural) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;

  /// In the order in which they were shown.
  const std::vector<ShownMessage>& messages() const { return messages_; }
  /// The files that replaceFile has put in their places, in order.
  const std::vector<std::string>& replacedFiles() const { return replacedFiles_; }

 private:
  Answer ask() const;
  void clearProgress();

  bool terminal_;
  bool progressShown_ = false;
  std::vector<ShownMessage> messages_;
  std::vector<std::string> replacedFiles_;
};

}  // namespace kiv
