#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "messages/message.h"
#include "tests/support/fake_host.h"

namespace kiv::test {

/// The message is this one in every byte. The messages of these functions count no places; those are the callers'.
inline void expectMessage(const kiv::Message& message, Icon icon, std::string_view code, const std::string& text,
                          const Location& location = {}) {
  const testing::ScopedTrace trace("", 0, text);
  EXPECT_EQ(message.text, text);
  EXPECT_EQ(message.code, code);
  EXPECT_EQ(message.icon, icon);
  EXPECT_EQ(message.buttons, Buttons::ok);
  EXPECT_EQ(message.location, location);
  EXPECT_TRUE(message.places.empty());
}

inline void expectInformation(const kiv::Message& message, std::string_view code, const std::string& text,
                              const Location& location = {}) {
  expectMessage(message, Icon::information, code, text, location);
}

inline void expectCritical(const kiv::Message& message, std::string_view code, const std::string& text,
                           const Location& location = {}) {
  expectMessage(message, Icon::critical, code, text, location);
}

/// The message is a question of this text, answered by Yes or No.
inline void expectQuestion(const kiv::Message& message, std::string_view code, const std::string& text) {
  EXPECT_EQ(message, (kiv::Message{code, Icon::exclamation, Buttons::yesNo, text, {}, {}, message.names}));
}

}  // namespace kiv::test
