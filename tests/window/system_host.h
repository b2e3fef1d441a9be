#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/win32/win32_system.h"
#include "tests/support/fake_host.h"

namespace kiv::test {

/// The real system below a person who is not there: messages are kept, everything else happens.
class SystemHost : public Win32System {
 public:
  Answer message(Icon icon, std::string_view text, Buttons buttons) override {
    messages.push_back({icon, std::string(text), buttons});
    return buttons == Buttons::ok ? Answer::ok : Answer::no;
  }
  bool showText(const std::string& /*name*/) override { return false; }
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override { ++eventRounds; }
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

  std::vector<Message> messages;
  int eventRounds = 0;
};

}  // namespace kiv::test
