#include "platform/win32/win32_user.h"

#include <algorithm>

#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

UINT boxIconOf(Icon icon) {
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

Answer Win32User::show(const Message& message) {
  const UINT buttons = message.buttons == Buttons::yesNo ? MB_YESNO : MB_OK;
  std::string shown = message.text;
  std::replace(shown.begin(), shown.end(), '\0', ' ');  // the box would end its text there
  const int pressed = MessageBoxA(owner(), shown.c_str(), "KivSystem", boxIconOf(message.icon) | buttons);
  if (message.buttons == Buttons::ok) {
    return Answer::ok;
  }
  return pressed == IDYES ? Answer::yes : Answer::no;
}

void Win32User::setPointer(Pointer pointer) {
  SetCursor(LoadCursor(nullptr, pointer == Pointer::hourglass ? IDC_WAIT : IDC_ARROW));
}

void Win32User::processEvents() {
  MSG message{};
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    if (!handlesMessage(&message)) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
}

}  // namespace kiv
