#pragma once

#include "platform/win32/windows_api.h"

namespace kiv {

/// Dots per inch of the monitor that the window is on; of the whole screen on systems that know no other.
int dpiOf(HWND window);
/// Dots per inch of the first monitor.
int systemDpi();

/// Twips, 1440 to an inch, as pixels.
int toPixels(double twips, int dpi);
double toTwips(int pixels, int dpi);

/// The whole size of a window of this style whose inside has this size, in pixels.
SIZE outerSize(SIZE inside, DWORD style, int dpi);

}  // namespace kiv
