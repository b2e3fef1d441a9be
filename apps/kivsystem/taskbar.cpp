#include "apps/kivsystem/taskbar.h"

#include <utility>

#include <shobjidl.h>

namespace kiv {

void Taskbar::release() {
  if (list_ != nullptr) {
    std::exchange(list_, nullptr)->Release();
  }
}

bool Taskbar::find() {
  if (!std::exchange(sought_, true)) {
    void* list = nullptr;
    if (SUCCEEDED(CoCreateInstance(CLSID_TaskbarList, nullptr, CLSCTX_INPROC_SERVER, IID_ITaskbarList3, &list))) {
      list_ = static_cast<ITaskbarList3*>(list);
      if (FAILED(list_->HrInit())) {
        release();
      }
    }
  }
  return list_ != nullptr;
}

void Taskbar::showProgress(HWND window, int done, int all) {
  if (!find()) {
    return;
  }
  if (done < all) {
    list_->SetProgressValue(window, static_cast<ULONGLONG>(done), static_cast<ULONGLONG>(all));
  } else {
    list_->SetProgressState(window, TBPF_NOPROGRESS);
  }
}

}  // namespace kiv
