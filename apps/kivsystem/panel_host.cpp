#include "apps/kivsystem/panel_host.h"

#include "platform/win32/windows_api.h"

namespace kiv {

Answer PanelHost::message(Icon icon, std::string_view text, Buttons buttons) {
  if (view_ != nullptr) {
    view_->refresh();
  }
  return Win32Host::message(icon, text, buttons);
}

void PanelHost::setPointer(Pointer pointer) {
  pointer_ = pointer;
  Win32Host::setPointer(pointer);
}

void PanelHost::processEvents() {
  if (view_ != nullptr) {
    view_->refresh();
  }
  Win32Host::processEvents();
}

void PanelHost::showProgress(int done, int all, std::string_view /*plural*/) {
  if (view_ != nullptr) {
    view_->showProgress(done, all);
    processEvents();
  }
}

bool PanelHost::takesMessage(void* message) {
  return view_ != nullptr && IsDialogMessageA(view_->window(), static_cast<MSG*>(message)) != FALSE;
}

}  // namespace kiv
