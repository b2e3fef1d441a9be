#include "tests/window/drag.h"

#include <atomic>
#include <cstring>
#include <thread>

#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include "platform/win32/text.h"

namespace kiv::test {
namespace {

/// The side that the drag comes from: it drops once the pointer was over the target.
class Source final : public IDropSource {
 public:
  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    const bool known = IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, IID_IDropSource);
    *object = known ? static_cast<IDropSource*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // It lives as long as the drag that it is created for.
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL /*escape*/, DWORD /*keys*/) override {
    return over_ ? DRAGDROP_S_DROP : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) override {
    over_ = effect != DROPEFFECT_NONE;
    return DRAGDROP_S_USEDEFAULTCURSORS;
  }

 private:
  bool over_ = false;
};

/// Sends pointer moves to the window that handles the drag until the drag is over.
class Pusher {
 public:
  explicit Pusher(DWORD thread) : pushing_([this, thread] { push(thread); }) {}
  Pusher(const Pusher&) = delete;
  Pusher& operator=(const Pusher&) = delete;
  ~Pusher() {
    over_ = true;
    pushing_.join();
  }

 private:
  void push(DWORD thread) const {
    constexpr DWORD milliseconds = 20;
    while (!over_) {
      GUITHREADINFO info{};
      info.cbSize = sizeof info;
      if (GetGUIThreadInfo(thread, &info) != FALSE && info.hwndCapture != nullptr) {
        PostMessageA(info.hwndCapture, WM_MOUSEMOVE, MK_LBUTTON, 0);
      }
      Sleep(milliseconds);
    }
  }

  std::atomic<bool> over_ = false;
  std::thread pushing_;
};

HGLOBAL memoryOf(const void* bytes, std::size_t size) {
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  std::memcpy(GlobalLock(memory), bytes, size);
  GlobalUnlock(memory);
  return memory;
}

/// Drops the content of the clipboard.
bool dropClipboard(HWND target) {
  RECT place{};
  GetWindowRect(target, &place);
  SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  IDataObject* data = nullptr;
  if (FAILED(OleGetClipboard(&data))) {
    return false;
  }
  Source source;
  DWORD effect = DROPEFFECT_NONE;
  HRESULT result = E_FAIL;
  {
    const Pusher pusher(GetCurrentThreadId());
    result = DoDragDrop(data, &source, DROPEFFECT_COPY, &effect);
  }
  data->Release();
  return result == DRAGDROP_S_DROP && effect == DROPEFFECT_COPY;
}

bool drop(UINT format, const void* bytes, std::size_t size, HWND target) {
  OleInitialize(nullptr);
  OpenClipboard(nullptr);
  EmptyClipboard();
  SetClipboardData(format, memoryOf(bytes, size));
  CloseClipboard();
  const bool dropped = dropClipboard(target);
  OleUninitialize();
  return dropped;
}

}  // namespace

bool dropFiles(const std::vector<std::wstring>& files, HWND target) {
  DROPFILES head{};
  head.pFiles = sizeof head;
  head.fWide = TRUE;
  std::wstring names;
  for (const std::wstring& file : files) {
    names += file;
    names += L'\0';
  }
  names += L'\0';
  std::string content(sizeof head + names.size() * sizeof(wchar_t), '\0');
  std::memcpy(content.data(), &head, sizeof head);
  std::memcpy(content.data() + sizeof head, names.data(), names.size() * sizeof(wchar_t));
  return drop(CF_HDROP, content.data(), content.size(), target);
}

bool dropFiles(const std::vector<std::string>& files, HWND target) {
  std::vector<std::wstring> names;
  for (const std::string& file : files) {
    names.push_back(wide(file));
  }
  return dropFiles(names, target);
}

bool dropText(const std::string& text, HWND target) {
  return drop(CF_TEXT, text.c_str(), text.size() + 1, target);
}

}  // namespace kiv::test
