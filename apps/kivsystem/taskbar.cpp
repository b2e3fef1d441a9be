#include "apps/kivsystem/taskbar.h"

#include <utility>

#include <shobjidl.h>

namespace kiv {

void Taskbar::release() {
  if (list_ != nullptr) {
    std::exchange(list_, nullptr)->Release();
  }
}

void Taskbar::showProgress(HWND window, int done, int all) {
  if (list_ == nullptr) {
    void* list = nullptr;
    if (FAILED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &list))) {
      return;
    }
    list_ = static_cast<ITaskbarList3*>(list);
  }
  if (done < all) {
    list_->SetProgressValue(window, static_cast<ULONGLONG>(done), static_cast<ULONGLONG>(all));
  } else {
    list_->SetProgressState(window, TBPF_NOPROGRESS);
  }
}

}  // namespace kiv
