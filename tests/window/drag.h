#pragma once

#include <string>
#include <vector>

#include "platform/win32/windows_api.h"

namespace kiv::test {

/// Drags these files onto the middle of a window of another process and drops them there. Returns whether they were
/// accepted.
bool dropFiles(const std::vector<std::string>& files, HWND target);
bool dropFiles(const std::vector<std::wstring>& files, HWND target);

/// The same with a piece of text.
bool dropText(const std::string& text, HWND target);

}  // namespace kiv::test
