#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/win32/win32_system.h"
#include "tests/support/fake_host.h"

namespace kiv::test {

/// The real system with a user who is absent: messages are kept, everything else happens.
class SystemHost : public Win32System, public User {
 public:
  Answer show(const kiv::Message& message) override {
    messages.push_back({message.icon, message.text, message.buttons});
    return message.buttons == Buttons::ok ? Answer::ok : Answer::no;
  }
  bool showText(const std::string& /*name*/) override { return false; }
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override { ++eventRounds; }
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

  operator Host() { return {*this, *this, *this, *this}; }

  std::vector<Message> messages;
  int eventRounds = 0;
};

}  // namespace kiv::test
