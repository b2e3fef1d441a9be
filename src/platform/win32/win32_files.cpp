#include "platform/win32/win32_files.h"

#include <algorithm>
#include <utility>

#include "platform/prepared_file.h"
#include "platform/win32/file_destination.h"
#include "platform/win32/text.h"

namespace kiv {
namespace {

/// The most bytes that one call reads or writes; its length has only 32 bits.
constexpr std::size_t longestTransfer = 1U << 30U;

DWORD transferLength(std::size_t wanted) {
  return static_cast<DWORD>(std::min(wanted, longestTransfer));
}

class Win32Input : public InputFile {
 public:
  explicit Win32Input(Handle file) : file_(std::move(file)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    DWORD got = 0;
    if (ReadFile(file_.get(), buffer.data(), transferLength(buffer.size()), &got, nullptr) == FALSE) {
      return std::nullopt;
    }
    return got;
  }

  std::optional<std::uint64_t> size() const override {
    LARGE_INTEGER size{};
    return GetFileSizeEx(file_.get(), &size) == FALSE ? std::nullopt
                                                      : std::optional(static_cast<std::uint64_t>(size.QuadPart));
  }

  std::optional<FileStamp> stamp() const override { return stampOfHandle(file_.get()); }

 private:
  Handle file_;
};

class Win32Output : public OutputFile {
 public:
  explicit Win32Output(Handle file) : file_(std::move(file)) {}

  std::optional<std::string> write(std::string_view bytes) override { return writeAll(file_, bytes); }

 private:
  Handle file_;
};

Handle createFor(const std::string& name, DWORD disposition) {
  return Handle(
      CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::uint64_t joined(DWORD high, DWORD low) {
  constexpr unsigned bitsOfHalf = 32;
  return (std::uint64_t{high} << bitsOfHalf) | low;
}

struct SearchCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};

}  // namespace

std::optional<FileStamp> stampOfHandle(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION information{};
  if (GetFileInformationByHandle(file, &information) == FALSE) {
    return std::nullopt;
  }
  const FILETIME& changed = information.ftLastWriteTime;
  return FileStamp{{information.dwVolumeSerialNumber, joined(information.nFileIndexHigh, information.nFileIndexLow)},
                   joined(information.nFileSizeHigh, information.nFileSizeLow),
                   static_cast<std::int64_t>(joined(changed.dwHighDateTime, changed.dwLowDateTime))};
}

std::unique_ptr<InputFile> openForReading(const std::string& name) {
  Handle file(CreateFileA(name.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  // Reading from a device, which names like COM1.MUS stand for, might wait forever.
  if (!file.isOpen() || GetFileType(file.get()) != FILE_TYPE_DISK) {
    return nullptr;
  }
  return std::make_unique<Win32Input>(std::move(file));
}

std::unique_ptr<OutputFile> openForWriting(const std::string& name) {
  Handle file = createFor(name, CREATE_ALWAYS);
  if (!file.isOpen()) {
    return nullptr;
  }
  return std::make_unique<Win32Output>(std::move(file));
}

std::optional<std::string> writeAll(const Handle& file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    if (WriteFile(file.get(), bytes.data(), transferLength(bytes.size()), &written, nullptr) == FALSE) {
      return lastFailure();
    }
    bytes.remove_prefix(written);
  }
  return std::nullopt;
}

std::optional<std::string> replaceWhole(const std::string& target, const std::string& mark, std::string_view bytes) {
  PreparedFile file;
  auto failure = file.prepare(destinationOf(target, mark), bytes);
  return failure ? failure : file.place();
}

std::optional<std::string> createWhole(const std::string& target, const std::string& mark, std::string_view bytes) {
  PreparedFile file;
  auto failure = file.prepare(destinationOf(target, mark), bytes);
  return failure ? failure : file.placeIfFree();
}

std::vector<FolderEntry> entriesMatching(const std::string& pattern) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAA found{};
  HANDLE search = FindFirstFileA(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return entries;
  }
  const std::unique_ptr<void, SearchCloser> closer(search);
  do {
    entries.push_back({found.cFileName, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (FindNextFileA(search, &found) != FALSE);
  return entries;
}

}  // namespace kiv
