#pragma once

#include <string>
#include <string_view>

#include "platform/user.h"

struct HWND__;

namespace kiv {

/// The user of the windowed program: message boxes and the pointer. Texts are shown by a viewer program.
class Win32User : public User {
 public:
  Answer show(const Message& message) override;
  bool showText(const std::string& /*name*/) override { return false; }
  void setPointer(Pointer pointer) override;
  void processEvents() override;
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

 protected:
  /// The window that owns the message boxes; null while there is none.
  virtual HWND__* owner() { return nullptr; }
  /// Whether a message of the event queue was handled; the others go to their windows.
  virtual bool handlesMessage(void* /*message*/) { return false; }
};

}  // namespace kiv
