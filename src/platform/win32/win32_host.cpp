#include "platform/win32/win32_host.h"

#include <algorithm>

#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

UINT signOf(Icon icon) {
  switch (icon) {
    case Icon::information:
      return MB_ICONINFORMATION;
    case Icon::exclamation:
      return MB_ICONEXCLAMATION;
    case Icon::critical:
      return MB_ICONERROR;
    case Icon::none:
      break;
  }
  return 0;
}

}  // namespace

Answer Win32Host::message(Icon icon, std::string_view text, Buttons buttons) {
  const UINT set = buttons == Buttons::yesNo ? MB_YESNO : MB_OK;
  std::string shown(text);
  std::replace(shown.begin(), shown.end(), '\0', ' ');  // the box would end its text there
  const int pressed = MessageBoxA(owner(), shown.c_str(), "KivSystem", signOf(icon) | set);
  if (buttons == Buttons::ok) {
    return Answer::ok;
  }
  return pressed == IDYES ? Answer::yes : Answer::no;
}

void Win32Host::setPointer(Pointer pointer) {
  SetCursor(LoadCursor(nullptr, pointer == Pointer::hourglass ? IDC_WAIT : IDC_ARROW));
}

void Win32Host::processEvents() {
  MSG message{};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (!takesMessage(&message)) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
}

}  // namespace kiv
