#include "apps/companions/win32/file_dialog.h"

#include <memory>

#include <shobjidl.h>

#include "platform/win32/apartment.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_system.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using Com = std::unique_ptr<Interface, Releaser>;

struct TextReleaser {
  void operator()(wchar_t* text) const { CoTaskMemFree(text); }
};

Com<IShellItem> shellItem(const std::string& folder) {
  const std::wstring full = wide(Win32System::fullName(folder));
  void* item = nullptr;
  const HRESULT found = SHCreateItemFromParsingName(full.c_str(), nullptr, IID_IShellItem, &item);
  return Com<IShellItem>(SUCCEEDED(found) ? static_cast<IShellItem*>(item) : nullptr);
}

HRESULT addPath(IShellItemArray& items, DWORD index, std::vector<std::wstring>& paths) {
  IShellItem* found = nullptr;
  HRESULT result = items.GetItemAt(index, &found);
  const Com<IShellItem> item(found);
  wchar_t* name = nullptr;
  if (SUCCEEDED(result)) {
    result = item->GetDisplayName(SIGDN_FILESYSPATH, &name);
  }
  const std::unique_ptr<wchar_t, TextReleaser> path(name);
  if (SUCCEEDED(result)) {
    paths.emplace_back(path.get());
  }
  return result;
}

HRESULT addPaths(IFileOpenDialog& dialog, std::vector<std::wstring>& paths) {
  IShellItemArray* found = nullptr;
  HRESULT result = dialog.GetResults(&found);
  const Com<IShellItemArray> items(found);
  DWORD count = 0;
  if (SUCCEEDED(result)) {
    result = items->GetCount(&count);
  }
  for (DWORD i = 0; SUCCEEDED(result) && i < count; ++i) {
    result = addPath(*items, i, paths);
  }
  return result;
}

/// The system's dialog for files and folders. After a step has failed, the others do nothing.
class FileDialog {
 public:
  FileDialog() {
    void* object = nullptr;
    result_ = CoCreateInstance(CLSID_FileOpenDialog, nullptr, CLSCTX_INPROC_SERVER, IID_IFileOpenDialog, &object);
    dialog_.reset(SUCCEEDED(result_) ? static_cast<IFileOpenDialog*>(object) : nullptr);
  }

  void addOptions(FILEOPENDIALOGOPTIONS options) {
    FILEOPENDIALOGOPTIONS before = 0;
    then([&] { return dialog_->GetOptions(&before); });
    then([&] { return dialog_->SetOptions(before | options | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR); });
  }
  void setTitle(const std::string& title) {
    then([&] { return dialog_->SetTitle(wide(title).c_str()); });
  }
  void offerOnly(const std::string& type) {
    const std::wstring suffix = wide(type);
    const std::wstring pattern = L"*." + suffix;
    const std::wstring label = suffix + L" files (" + pattern + L")";
    const COMDLG_FILTERSPEC filter{label.c_str(), pattern.c_str()};
    then([&] { return dialog_->SetFileTypes(1, &filter); });
    then([&] { return dialog_->SetDefaultExtension(suffix.c_str()); });
  }
  void startIn(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
      if (const auto item = folder.empty() ? nullptr : shellItem(folder)) {
        then([&] { return dialog_->SetFolder(item.get()); });
        return;
      }
    }
  }
  Choice show() {
    Choice choice;
    then([&] { return dialog_->Show(nullptr); });
    constexpr DWORD cancelled = ERROR_CANCELLED;
    if (result_ == HRESULT_FROM_WIN32(cancelled)) {
      return choice;
    }
    then([&] { return addPaths(*dialog_, choice.paths); });
    if (FAILED(result_)) {
      return {{}, systemMessage(static_cast<DWORD>(result_))};
    }
    return choice;
  }

 private:
  template <typename Step>
  void then(Step step) {
    if (SUCCEEDED(result_)) {
      result_ = step();
    }
  }

  Apartment apartment_{COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE};
  Com<IFileOpenDialog> dialog_;
  HRESULT result_ = S_OK;
};

}  // namespace

Choice chooseFiles(const std::string& type, const std::vector<std::string>& startFolders) {
  FileDialog dialog;
  dialog.addOptions(FOS_ALLOWMULTISELECT | FOS_FILEMUSTEXIST);
  dialog.setTitle("Select " + type + " files");
  dialog.offerOnly(type);
  dialog.startIn(startFolders);
  return dialog.show();
}

Choice chooseFolder(const std::string& prompt, const std::string& startFolder) {
  FileDialog dialog;
  dialog.addOptions(FOS_PICKFOLDERS | FOS_PATHMUSTEXIST);
  dialog.setTitle(prompt);
  dialog.startIn({startFolder});
  return dialog.show();
}

}  // namespace kiv
