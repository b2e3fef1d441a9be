#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace kiv::bench {

/// A host whose disk is memory, so that only the system's own work is measured. What is written is taken and dropped;
/// there is nobody to talk to, and nothing to start.
class MemoryHost : public Host {
 public:
  std::map<std::string, std::string> files;  ///< what can be read
  std::size_t bytesWritten = 0;

  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  bool showText(const std::string& name) override;
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override { return files.erase(name) > 0; }
  std::vector<FolderEntry> listFolder(const std::string& /*folder*/) override { return {}; }
  std::string currentFolder() override { return "C:"; }
  std::optional<std::string> shortName(const std::string& /*path*/) override { return std::nullopt; }
  LocalTime now() override { return {}; }
  std::string upperCase(std::string_view text) override { return std::string(text); }
  std::size_t characterCount(std::string_view text) override { return text.size(); }
  std::string profileKey(const std::string& /*key*/) override { return ""; }
  std::int32_t runProcess(const std::string& /*commandLine*/, ShowState /*show*/) override { return -1; }
  std::optional<ShellFailure> runInShell(const std::string& command, WindowStyle style) override;
};

}  // namespace kiv::bench
