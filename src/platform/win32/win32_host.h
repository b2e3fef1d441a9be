#pragma once

#include <string>
#include <string_view>

#include "platform/win32/win32_system.h"

struct HWND__;

namespace kiv {

/// The host of the windowed program: message boxes, the pointer, and Notepad as the viewer.
class Win32Host : public Win32System {
 public:
  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  bool showText(const std::string& /*name*/) override { return false; }
  void setPointer(Pointer pointer) override;
  void processEvents() override;
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

 protected:
  /// The window that boxes stand before; null while there is none.
  virtual HWND__* owner() { return nullptr; }
  /// Whether a message of the event queue was dealt with; the others go to their windows.
  virtual bool takesMessage(void* /*message*/) { return false; }
};

}  // namespace kiv
