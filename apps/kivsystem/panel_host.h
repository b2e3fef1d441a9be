#pragma once

#include "platform/win32/win32_host.h"

namespace kiv {

/// What the host of the panel needs of its window.
class PanelView {
 public:
  PanelView() = default;
  PanelView(const PanelView&) = delete;
  PanelView& operator=(const PanelView&) = delete;
  virtual ~PanelView() = default;

  virtual HWND__* window() const = 0;
  /// Brings what is on the screen up to the panel's state.
  virtual void refresh() = 0;
  virtual void showProgress(int done, int all) = 0;
};

/// The host while there is a panel: boxes stand before it, long runs keep it painted.
class PanelHost : public Win32Host {
 public:
  /// The window that shows the panel, which must outlive its use; null while there is none.
  void showOn(PanelView* view) { view_ = view; }

  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  void setPointer(Pointer pointer) override;
  void processEvents() override;
  void showProgress(int done, int all, std::string_view plural) override;

  Pointer pointer() const { return pointer_; }

 protected:
  HWND__* owner() override { return view_ != nullptr ? view_->window() : nullptr; }
  bool takesMessage(void* message) override;

 private:
  PanelView* view_ = nullptr;
  Pointer pointer_ = Pointer::normal;
};

}  // namespace kiv
