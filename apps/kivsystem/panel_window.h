#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "apps/kivsystem/drop_target.h"
#include "apps/kivsystem/panel_controls.h"
#include "apps/kivsystem/panel_user.h"
#include "apps/kivsystem/taskbar.h"
#include "shell/kivsystem.h"

namespace kiv {

/// The window that shows the panel and forwards to its handlers what the user does. While a handler runs, clicks have
/// no effect.
class PanelWindow final : public PanelView {
 public:
  PanelWindow(PanelUser& user, KivSystem& program) : user_(user), program_(program) {}
  PanelWindow(const PanelWindow&) = delete;
  PanelWindow& operator=(const PanelWindow&) = delete;
  ~PanelWindow() override;

  /// Sets, before start-up, the size of the panel's window and of the screen.
  static void measure(Panel& panel);

  /// Shows the window, in the manner that the program was started with, and runs until the program ends. Returns its
  /// exit code.
  int run(int show);

  HWND__* window() const override { return window_; }
  void refresh() override;
  void showProgress(int done, int all) override;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK textBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR panelWindow);
  void create(int show);
  bool handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
  void command(int id, int notification);
  void placeOn(int dpi, const RECT* suggested);
  bool colorOf(HDC context, HWND control, LRESULT& result) const;
  void handleDrop();
  void onTextBoxMessage(UINT message, WPARAM wParam, LPARAM lParam);
  void perform(const std::function<void()>& handler);

  PanelUser& user_;
  KivSystem& program_;
  HWND window_ = nullptr;
  PanelControls controls_;
  Taskbar taskbar_;
  std::unique_ptr<DropTarget> dropTarget_;
  std::optional<DroppedFiles> dropped_;  ///< received, and not yet handled
  bool oleStarted_ = false;
  bool mouseDownInTextBox_ = false;
  bool shown_ = false;
  bool busy_ = false;
};

}  // namespace kiv
