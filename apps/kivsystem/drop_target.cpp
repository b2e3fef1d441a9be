#include "apps/kivsystem/drop_target.h"

#include <new>
#include <utility>

#include <ole2.h>
#include <shellapi.h>

#include "platform/win32/code_page_path.h"

namespace kiv {
namespace {

std::string droppedFile(HDROP drop, UINT i) {
  std::wstring name(DragQueryFileW(drop, i, nullptr, 0) + std::size_t{1}, L'\0');
  name.resize(DragQueryFileW(drop, i, name.data(), static_cast<UINT>(name.size())));
  return closestPath(name);
}

DroppedFiles filesIn(IDataObject& data) {
  FORMATETC format{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
  STGMEDIUM medium{};
  if (FAILED(data.GetData(&format, &medium))) {
    return std::nullopt;
  }
  std::vector<std::string> files;
  const auto drop = static_cast<HDROP>(medium.hGlobal);
  constexpr UINT howMany = 0xFFFFFFFF;
  const UINT count = DragQueryFileW(drop, howMany, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    files.push_back(droppedFile(drop, i));
  }
  ReleaseStgMedium(&medium);
  return files;
}

/// The object that the system calls; it counts its users and is deleted with the last of them.
class Target final : public IDropTarget {
 public:
  explicit Target(DropReceiver receiver) : receiver_(std::move(receiver)) {}
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;
  virtual ~Target() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    if (IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, IID_IDropTarget)) {
      *object = static_cast<IDropTarget*>(this);
      AddRef();
      return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++users_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --users_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* /*data*/, DWORD /*keys*/, POINTL /*place*/, DWORD* effect) override {
    *effect = allowed(*effect);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD /*keys*/, POINTL /*place*/, DWORD* effect) override {
    *effect = allowed(*effect);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD /*keys*/, POINTL /*place*/, DWORD* effect) override {
    *effect = allowed(*effect);
    try {
      if (receiver_.isReady()) {
        receiver_.dropped(filesIn(*data));
      }
      return S_OK;
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }

 private:
  /// The effect of a drop, among those that the other program allows. What is copied are the names.
  DWORD allowed(DWORD effects) const {
    const DWORD copy = effects & DROPEFFECT_COPY;
    const DWORD link = effects & DROPEFFECT_LINK;
    const DWORD accepted = copy != DROPEFFECT_NONE ? copy : link;
    return receiver_.isReady() ? accepted : DROPEFFECT_NONE;
  }

  DropReceiver receiver_;
  ULONG users_ = 1;
};

}  // namespace

DropTarget::DropTarget(HWND control, DropReceiver receiver)
    : control_(control),
      target_(std::make_unique<Target>(std::move(receiver)).release(), [](IDropTarget* target) { target->Release(); }) {
  RegisterDragDrop(control_, target_.get());
}

DropTarget::~DropTarget() {
  RevokeDragDrop(control_);
}

}  // namespace kiv
