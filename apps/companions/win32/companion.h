#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// One run of a companion: its messages to the user, and its answer to the caller.
class Companion {
 public:
  static constexpr int succeeded = 0;
  static constexpr int failed = 1;

  /// The program's name is the title of its boxes.
  explicit Companion(std::wstring name) : name_(std::move(name)) {}

  void inform(const std::wstring& text) const;
  /// Shows what failed in a critical box. Returns the exit code.
  int fail(const std::wstring& text) const;
  /// Reports that the path has no name that callers could read. Returns the exit code.
  int failToName(const std::wstring& path) const;
  /// Reports that an analysis would refuse the path, which is one of the network. Returns the exit code.
  int failForNetwork(const std::wstring& path) const;
  /// Reports that the command line does not have the form. Returns the exit code.
  int refuse(std::string_view line, std::string_view form) const;
  /// Replaces the named file by one with this content, or reports why it cannot. Returns the exit code.
  int answer(const std::string& file, std::string_view content) const;

 private:
  std::wstring name_;
};

}  // namespace kiv
