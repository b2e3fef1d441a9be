#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "messages/message.h"

namespace kiv::messages {

// What the functions of this folder begin a message with; its location is set afterwards.

inline Message information(std::string_view code, std::string text) {
  return {code, Icon::information, Buttons::ok, std::move(text), {}, {}};
}

inline Message critical(std::string_view code, std::string text) {
  return {code, Icon::critical, Buttons::ok, std::move(text), {}, {}};
}

}  // namespace kiv::messages
