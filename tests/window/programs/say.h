#pragma once

#include <string>

#include "platform/win32/handle.h"

namespace kiv::test {

/// Leaves the text in said.txt in the current folder.
inline void say(const std::string& text) {
  const Handle file(CreateFileA("said.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

}  // namespace kiv::test
