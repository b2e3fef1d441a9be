#pragma once

#include <string>
#include <string_view>

#include "platform/win32/windows_api.h"
#include "tests/support/pages.h"
#include "tests/window/work_folder.h"

namespace kiv::test {

inline constexpr std::string_view fluteAndBass =
    "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
inline constexpr std::string_view flute = "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n";
inline constexpr std::string_view oboe = "staff 1 at 0 instrument 103\nbarline 1 at 0 spans 1\n";
inline constexpr std::string_view withoutIdentifier = "staff 1 at 0\nbarline 1 at 0 spans 1\n";

/// The current folder of a test, with a group of pages in it.
class PageFolder : public WorkFolder {
 public:
  using WorkFolder::WorkFolder;
  void addFile(const std::string& name, std::string_view content) {
    writeFile(name, content);
    names_ += *this / name + " 1\r\n";
  }
  void addPage(const std::string& name, std::string_view text) { addFile(name, page(text)); }
  /// Lists what was added in a names file.
  void writeNames(const std::string& name) const { writeFile(name, names_); }
  /// The full name in capitals, as names from a names file become.
  std::string upper(const std::string& name) const {
    std::string full = *this / name;
    CharUpperBuffA(full.data(), static_cast<DWORD>(full.size()));
    return full;
  }

 private:
  std::string names_;
};

}  // namespace kiv::test
