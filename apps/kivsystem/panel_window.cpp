#include "apps/kivsystem/panel_window.h"

#include <new>
#include <utility>

#include <commctrl.h>
#include <ole2.h>
#include <windowsx.h>

#include "apps/kivsystem/dpi.h"
#include "apps/kivsystem/out_of_memory.h"
#include "apps/kivsystem/report_menu.h"
#include "apps/kivsystem/show_report.h"
#include "shell/frm_kivsystem.h"
#include "shell/select_files.h"

namespace kiv {
namespace {

constexpr const char* className = "frmKivSystem";
constexpr DWORD windowStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr const char* busyProperty =
    "KivSystem.Busy";  // on the window while a handler runs, for programs that drive it
constexpr UINT textBoxClicked = WM_APP + 1;
constexpr UINT filesDropped = WM_APP + 2;
constexpr UINT monitorChanged = 0x02E0;  // WM_DPICHANGED, which older headers do not name

HICON icon() {
  const HICON own = LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(1));
  return own != nullptr ? own : LoadIconA(nullptr, IDI_APPLICATION);
}

void registerClass(WNDPROC procedure) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = procedure;
  windowClass.cbWndExtra = DLGWINDOWEXTRA;  // the system's dialog procedure handles the keyboard
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hIcon = icon();
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  windowClass.lpszClassName = className;
  RegisterClassA(&windowClass);
}

SIZE outerSizeOf(const Panel& panel, int dpi) {
  const SIZE frame = outerSize({toPixels(panelWidth, dpi), toPixels(panelHeight, dpi)}, windowStyle, dpi);
  return {frame.cx, toPixels(panel.place.height, dpi)};
}

bool isHighContrast() {
  HIGHCONTRASTA contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace

PanelWindow::~PanelWindow() {
  user_.showOn(nullptr);
  dropTarget_.reset();
  if (window_ != nullptr) {
    DestroyWindow(window_);
    taskbar_.release();
  }
  if (oleStarted_) {
    OleUninitialize();
  }
}

void PanelWindow::measure(Panel& panel) {
  const int dpi = systemDpi();
  const SIZE size = outerSize({toPixels(panelWidth, dpi), toPixels(panelHeight, dpi)}, windowStyle, dpi);
  panel.place.width = toTwips(size.cx, dpi);
  panel.screenWidth = toTwips(GetSystemMetrics(SM_CXSCREEN), dpi);
  panel.screenHeight = toTwips(GetSystemMetrics(SM_CYSCREEN), dpi);
}

int PanelWindow::run(int show) {
  create(show);
  if (window_ == nullptr) {
    return reportOutOfMemory();
  }
  MSG message{};
  while (GetMessageA(&message, nullptr, 0, 0) > 0) {
    if (IsDialogMessageA(window_, &message) == FALSE) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }
  return static_cast<int>(message.wParam);
}

void PanelWindow::create(int show) {
  InitCommonControls();
  oleStarted_ = SUCCEEDED(OleInitialize(nullptr));  // for drops
  registerClass(procedure);
  const Panel& panel = program_.panel;
  const int dpi = systemDpi();
  const SIZE size = outerSizeOf(panel, dpi);
  window_ = CreateWindowExA(WS_EX_CONTROLPARENT, className, panel.title.c_str(), windowStyle,
                            toPixels(panel.place.left, dpi), toPixels(panel.place.top, dpi), size.cx, size.cy, nullptr,
                            nullptr, GetModuleHandleA(nullptr), this);
  if (window_ == nullptr) {
    return;
  }
  ReportMenu::addTo(window_);
  controls_.create(window_, panel, dpi);
  if (dpiOf(window_) != dpi) {
    placeOn(dpiOf(window_), nullptr);
  }
  dropTarget_ = std::make_unique<DropTarget>(controls_.window(&Panel::cmdSelectFiles),
                                             DropReceiver{[this] { return !busy_ && !dropped_; },
                                                          [this](DroppedFiles files) {
                                                            dropped_ = std::move(files);
                                                            PostMessageA(window_, filesDropped, 0, 0);
                                                          }});
  SetWindowSubclass(controls_.window(&Panel::txtFirstResultFile), textBoxProcedure, 0,
                    reinterpret_cast<DWORD_PTR>(this));
  user_.showOn(this);
  shown_ = true;
  ShowWindow(window_, show);
  // This also makes a button the one that the Enter key presses.
  SendMessageA(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(controls_.first()), TRUE);
}

LRESULT CALLBACK PanelWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* creation = reinterpret_cast<const CREATESTRUCTA*>(lParam);
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
  }
  auto* panel = reinterpret_cast<PanelWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  LRESULT result = 0;
  try {
    if (panel != nullptr && panel->shown_ && panel->handle(message, wParam, lParam, result)) {
      return result;
    }
  } catch (const std::bad_alloc&) {
    // No exception may leave a procedure that the system calls.
    ShowWindow(window, SW_HIDE);
    PostQuitMessage(reportOutOfMemory());
  }
  return DefDlgProcA(window, message, wParam, lParam);
}

LRESULT CALLBACK PanelWindow::textBoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR /*id*/,
                                               DWORD_PTR panelWindow) {
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  reinterpret_cast<PanelWindow*>(panelWindow)->onTextBoxMessage(message, wParam, lParam);
  return result;
}

void PanelWindow::onTextBoxMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  bool opened = message == WM_KEYDOWN && wParam == VK_F4;
  if (message == WM_LBUTTONDOWN) {
    mouseDownInTextBox_ = true;
  } else if (message == WM_LBUTTONUP && std::exchange(mouseDownInTextBox_, false)) {
    // A drag out of the box selects text.
    RECT inside{};
    GetClientRect(controls_.window(&Panel::txtFirstResultFile), &inside);
    opened = PtInRect(&inside, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}) != FALSE;
  }
  if (opened) {
    PostMessageA(window_, textBoxClicked, 0, 0);
  }
}

bool PanelWindow::handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
  switch (message) {
    case WM_COMMAND:
      command(LOWORD(wParam), HIWORD(wParam));
      return true;
    case textBoxClicked:
      perform([this] { clicked(program_, &Panel::txtFirstResultFile); });
      return true;
    case filesDropped:
      handleDrop();
      return true;
    case WM_CLOSE:
      perform([this] { clicked(program_, &Panel::cmdReturn); });
      return true;
    case WM_SYSCOMMAND:
      if (ReportMenu::isChosen(wParam)) {
        perform([this] { showReport(program_); });
        return true;
      }
      return false;
    case WM_CTLCOLORSTATIC:
      return colorOf(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam), result);
    case WM_SETCURSOR:
      if (user_.pointer() == Pointer::hourglass) {
        SetCursor(LoadCursorA(nullptr, IDC_WAIT));
        result = TRUE;
        return true;
      }
      return false;
    case monitorChanged:
      placeOn(LOWORD(wParam), reinterpret_cast<const RECT*>(lParam));
      return true;
    default:
      return false;
  }
}

void PanelWindow::command(int id, int notification) {
  const ControlLayout* layout = controls_.layoutOf(id);
  if (layout == nullptr) {
    return;
  }
  if (layout->kind == ControlKind::textBox) {
    if (notification == EN_CHANGE) {
      busy_ ? controls_.undo(id) : controls_.readBack(id, program_.panel);
    }
  } else if (notification == BN_CLICKED) {
    if (busy_) {
      controls_.undo(id);
      return;
    }
    controls_.readBack(id, program_.panel);
    perform([this, layout] { clicked(program_, layout->control); });
  }
}

void PanelWindow::handleDrop() {
  if (busy_ || !dropped_) {
    return;
  }
  const DroppedFiles files = *std::exchange(dropped_, std::nullopt);
  perform([&] { cmdSelectFiles_OLEDragDrop(program_, files); });
}

void PanelWindow::perform(const std::function<void()>& handler) {
  if (busy_) {
    return;
  }
  busy_ = true;
  SetPropA(window_, busyProperty, window_);
  try {
    handler();
    // Clicks that were made while the handler waited for another program arrive only now, and must have no effect.
    user_.processEvents();
  } catch (const ProgramEnd& end) {
    if (end.message) {
      user_.show(*end.message);
    }
    // Nor may this one leave the procedure that the system calls.
    ShowWindow(window_, SW_HIDE);
    PostQuitMessage(end.exitCode);
    return;
  }
  RemovePropA(window_, busyProperty);
  busy_ = false;
  if (dropped_) {  // earlier than the handler began
    PostMessageA(window_, filesDropped, 0, 0);
  }
}

void PanelWindow::refresh() {
  controls_.show(program_.panel);
  ReportMenu::enable(window_, program_.analyzed.has_value());
  if (program_.panel.visible != (IsWindowVisible(window_) != FALSE)) {
    ShowWindow(window_, program_.panel.visible ? SW_SHOW : SW_HIDE);
    if (program_.panel.visible) {
      SetForegroundWindow(window_);  // another program had it meanwhile
    }
  }
}

void PanelWindow::showProgress(int done, int all) {
  taskbar_.showProgress(window_, done, all);
}

void PanelWindow::placeOn(int dpi, const RECT* suggested) {
  const SIZE size = outerSizeOf(program_.panel, dpi);
  const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | (suggested == nullptr ? SWP_NOMOVE : 0U);
  SetWindowPos(window_, nullptr, suggested != nullptr ? suggested->left : 0, suggested != nullptr ? suggested->top : 0,
               size.cx, size.cy, flags);
  controls_.place(dpi);
}

bool PanelWindow::colorOf(HDC context, HWND control, LRESULT& result) const {
  constexpr COLORREF blue = RGB(0, 0, 255);
  if (control != controls_.window(&Panel::lblWait)) {
    return false;
  }
  SetTextColor(context, isHighContrast() ? GetSysColor(COLOR_BTNTEXT) : blue);
  SetBkColor(context, GetSysColor(COLOR_BTNFACE));
  result = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
  return true;
}

}  // namespace kiv
