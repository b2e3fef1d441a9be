#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "apps/kivsystem/drop_target.h"
#include "apps/kivsystem/panel_controls.h"
#include "apps/kivsystem/panel_host.h"
#include "apps/kivsystem/taskbar.h"
#include "shell/kivsystem.h"

namespace kiv {

/// The window that shows the panel and tells its handlers what the person does. While a handler runs, presses have no
/// effect.
class PanelWindow final : public PanelView {
 public:
  PanelWindow(PanelHost& host, KivSystem& program) : host_(host), program_(program) {}
  PanelWindow(const PanelWindow&) = delete;
  PanelWindow& operator=(const PanelWindow&) = delete;
  ~PanelWindow() override;

  /// Tells the panel, before start-up, how large its window will be and how large the screen is.
  static void measure(Panel& panel);

  /// Shows the window, in the manner that the program was started with, and lives until the program ends. Returns its
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
  bool colourOf(HDC context, HWND control, LRESULT& result) const;
  void takeDrop();
  void textBoxTold(UINT message, WPARAM wParam, LPARAM lParam);
  void perform(const std::function<void()>& handler);

  PanelHost& host_;
  KivSystem& program_;
  HWND window_ = nullptr;
  PanelControls controls_;
  Taskbar taskbar_;
  std::unique_ptr<DropTarget> dropTarget_;
  std::optional<DroppedFiles> dropped_;  ///< taken over, and not yet handled
  bool oleStarted_ = false;
  bool pressedInTextBox_ = false;
  bool shown_ = false;
  bool busy_ = false;
};

}  // namespace kiv
