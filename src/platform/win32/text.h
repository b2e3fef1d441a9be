#pragma once

#include <string>
#include <string_view>

#include "platform/win32/windows_api.h"

namespace kiv {

/// Text of a code page, CP_ACP or CP_UTF8, as UTF-16.
std::wstring wide(std::string_view text, UINT codePage = CP_ACP);

/// UTF-16 text in a code page: CP_ACP or CP_UTF8. Characters that the page lacks become its replacement character.
std::string narrow(std::wstring_view text, UINT codePage);

/// The system's words for an error number or a COM result, without a line end; the number where it has none.
std::string systemMessage(DWORD error);

/// The system's words for the calling thread's last failure.
std::string lastFailure();

}  // namespace kiv
