#include "apps/kivsystem/dpi.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace kiv {
namespace {

constexpr double twipsPerInch = 1440;

/// A function of the user interface library that older systems lack; null there.
template <typename Function>
Function newerFunction(const char* name) {
  // GetProcAddress gives one type for all functions.
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), name)));
}

}  // namespace

int systemDpi() {
  const HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
  ReleaseDC(nullptr, screen);
  return dpi;
}

int dpiOf(HWND window) {
  static const auto getDpiForWindow = newerFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
  const UINT dpi = getDpiForWindow != nullptr ? getDpiForWindow(window) : 0;
  return dpi != 0 ? static_cast<int>(dpi) : systemDpi();
}

int toPixels(double twips, int dpi) {
  constexpr double farthest = std::numeric_limits<std::int16_t>::max();
  return static_cast<int>(std::lround(std::clamp(twips * dpi / twipsPerInch, -farthest, farthest)));
}

double toTwips(int pixels, int dpi) {
  return pixels * twipsPerInch / dpi;
}

SIZE outerSize(SIZE inside, DWORD style, int dpi) {
  static const auto adjustForDpi =
      newerFunction<BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
  RECT frame{0, 0, inside.cx, inside.cy};
  if (adjustForDpi == nullptr || adjustForDpi(&frame, style, FALSE, 0, static_cast<UINT>(dpi)) == FALSE) {
    AdjustWindowRectEx(&frame, style, FALSE, 0);
  }
  return {frame.right - frame.left, frame.bottom - frame.top};
}

}  // namespace kiv
