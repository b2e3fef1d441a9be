#include "platform/win32/temporary_files.h"

#include <random>

#include "platform/temporary_folder.h"
#include "platform/win32/code_page_path.h"
#include "platform/win32/shell_open.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"

namespace kiv {
namespace {

/// With a backslash at its end; "" when the user has none.
std::wstring temporaryFolder() {
  std::wstring folder(MAX_PATH + 1, L'\0');
  folder.resize(GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()));
  return folder;
}

/// 128 bits from the system, as digits.
std::wstring randomDigits() {
  constexpr int words = 4;
  constexpr std::uint32_t bitsPerDigit = 4;
  constexpr std::uint32_t lowest = 0xF;
  std::random_device random;
  std::wstring digits;
  for (int word = 0; word < words; ++word) {
    std::uint32_t bits = random();
    for (int digit = 0; digit < 8; ++digit, bits >>= bitsPerDigit) {
      digits += L"0123456789abcdef"[bits & lowest];
    }
  }
  return digits;
}

/// A link of that name is not followed, but refused as any other file.
Handle createNew(const std::wstring& path) {
  return Handle(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

/// Returns why the file cannot be written; it is gone then.
std::optional<std::string> writeNew(const std::wstring& path, std::string_view bytes) {
  Handle file = createNew(path);
  if (!file.isOpen()) {
    return lastFailure();
  }
  auto failure = writeAll(file, bytes);
  if (failure) {
    file = Handle();
    DeleteFileW(path.c_str());
  }
  return failure;
}

}  // namespace

std::optional<FileFailure> openAsTemporaryPage(std::string_view page) {
  const std::wstring folder = temporaryFolder();
  if (folder.empty()) {
    return FileFailure{"%TEMP%", lastFailure()};
  }
  const std::wstring path = folder + L"KivSystem-" + randomDigits() + L".html";
  auto failure = writeNew(path, page);
  if (!failure) {
    failure = openInShell(path);
  }
  return failure ? std::optional(FileFailure{narrowExactly(path), *failure}) : std::nullopt;
}

std::string makeTemporaryFolder() {
  const std::wstring folder = temporaryFolder();
  const std::wstring path = folder + L"kivsys-" + randomDigits();
  const bool isMade = !folder.empty() && CreateDirectoryW(path.c_str(), nullptr) != FALSE;
  return isMade ? closestPath(path) : std::string();
}

}  // namespace kiv
