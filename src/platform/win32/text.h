#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/win32/windows_api.h"

namespace kiv {

/// Text of a code page, CP_ACP or CP_UTF8, as UTF-16.
std::wstring wide(std::string_view text, UINT codePage = CP_ACP);

/// The length of the folder in a name of the ANSI code page, with the separator or the colon at its end; 0 without one.
std::size_t folderLength(std::string_view name);

/// UTF-16 text in a code page: CP_ACP or CP_UTF8. Characters that the page lacks become its replacement character.
std::string narrow(std::wstring_view text, UINT codePage);

/// UTF-16 text in the ANSI code page, with a question mark for each character that the page lacks.
std::string narrowExactly(std::wstring_view text);

/// The system's words for an error number or a COM result, without a line end; the number where it has none.
std::string systemMessage(DWORD error);

/// The system's words for the calling thread's last failure.
std::string lastFailure();

}  // namespace kiv
