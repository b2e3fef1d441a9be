#pragma once

#include "platform/win32/win32_user.h"

namespace kiv {

/// What the panel's user needs of its window.
class PanelView {
 public:
  PanelView() = default;
  PanelView(const PanelView&) = delete;
  PanelView& operator=(const PanelView&) = delete;
  virtual ~PanelView() = default;

  virtual HWND__* window() const = 0;
  /// Updates the window to the panel's state.
  virtual void refresh() = 0;
  virtual void showProgress(int done, int all) = 0;
};

/// The user while there is a panel: the panel owns the message boxes, and long runs keep it painted.
class PanelUser : public Win32User {
 public:
  /// The window that shows the panel, which must outlive its use; null while there is none.
  void showOn(PanelView* view) { view_ = view; }

  Answer show(const Message& message) override;
  void setPointer(Pointer pointer) override;
  void processEvents() override;
  void showProgress(int done, int all, std::string_view plural) override;

  Pointer pointer() const { return pointer_; }

 protected:
  HWND__* owner() override { return view_ != nullptr ? view_->window() : nullptr; }
  bool handlesMessage(void* message) override;

 private:
  PanelView* view_ = nullptr;
  Pointer pointer_ = Pointer::normal;
};

}  // namespace kiv
