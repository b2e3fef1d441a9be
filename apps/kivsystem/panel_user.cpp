#include "apps/kivsystem/panel_user.h"

#include "platform/win32/windows_api.h"

namespace kiv {

Answer PanelUser::show(const Message& message) {
  if (view_ != nullptr) {
    view_->refresh();
  }
  return Win32User::show(message);
}

void PanelUser::setPointer(Pointer pointer) {
  pointer_ = pointer;
  Win32User::setPointer(pointer);
}

void PanelUser::processEvents() {
  if (view_ != nullptr) {
    view_->refresh();
  }
  Win32User::processEvents();
}

void PanelUser::showProgress(int done, int all, std::string_view /*plural*/) {
  if (view_ != nullptr) {
    view_->showProgress(done, all);
    processEvents();
  }
}

bool PanelUser::handlesMessage(void* message) {
  return view_ != nullptr && IsDialogMessageA(view_->window(), static_cast<MSG*>(message)) != FALSE;
}

}  // namespace kiv
