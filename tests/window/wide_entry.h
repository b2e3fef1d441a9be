#pragma once

#include <string>

namespace kiv::test {

/// A file or folder, gone with this object, whose name the code page cannot hold.
class WideEntry {
 public:
  enum class Kind { file, folder };
  WideEntry(const std::string& folder, const std::wstring& name, Kind kind);
  WideEntry(const WideEntry&) = delete;
  WideEntry& operator=(const WideEntry&) = delete;
  ~WideEntry();

  const std::wstring& path() const { return path_; }
  /// The name by which byte calls reach the entry, without its folder.
  std::string shortName() const;

 private:
  std::wstring path_;
  Kind kind_;
};

/// A folder that is the current one for as long as this lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::wstring& path);
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder();

 private:
  std::wstring before_;
};

}  // namespace kiv::test
