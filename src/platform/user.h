#pragma once

#include <string>
#include <string_view>

#include "messages/message.h"

namespace kiv {

enum class Pointer { normal, hourglass };

/// The user, in front of a panel or a console.
class User {
 public:
  User() = default;
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  virtual ~User() = default;

  /// Shows the message, on Windows in a modal box titled "KivSystem", and returns the button that closed it.
  virtual Answer show(const Message& message) = 0;
  /// Shows the text file in the user interface's own way. False when it has none and a viewer program is to be started.
  virtual bool showText(const std::string& name) = 0;
  virtual void setPointer(Pointer pointer) = 0;
  /// Lets the user interface repaint and handle events.
  virtual void processEvents() = 0;
  /// Shows how far a long run has come: done of all, both counted in what the plural names ("pages").
  virtual void showProgress(int done, int all, std::string_view plural) = 0;
};

}  // namespace kiv
