#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// A host for an analysis that must leave no trace: it reads the disk of another host, keeps what is written in
/// memory, where it is read back from, and collects messages instead of showing them. Questions are answered No.
class QuietHost : public Host {
 public:
  /// The disk must outlive this.
  explicit QuietHost(Host& disk) : disk_(disk) {}

  /// Puts a file into the memory.
  void addFile(const std::string& name, std::string content) { written_[upperCase(name)] = std::move(content); }
  /// Makes the file of the other host readable under its name in any case, whatever else the disk has.
  void addAlias(const std::string& name) { aliases_[upperCase(name)] = name; }
  /// What was written under this name; "" when nothing was.
  std::string written(const std::string& name);
  /// The texts of the messages, in order.
  const std::vector<std::string>& messages() const { return messages_; }

  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override { return written_.erase(upperCase(name)) > 0; }
  std::vector<FolderEntry> listFolder(const std::string& folder) override { return disk_.listFolder(folder); }
  std::string currentFolder() override { return disk_.currentFolder(); }
  std::optional<std::string> shortName(const std::string& path) override { return disk_.shortName(path); }
  LocalTime now() override { return disk_.now(); }
  std::string upperCase(std::string_view text) override { return disk_.upperCase(text); }
  std::size_t characterCount(std::string_view text) override { return disk_.characterCount(text); }
  std::string profileKey(const std::string& /*key*/) override { return ""; }
  std::int32_t runProcess(const std::string& /*commandLine*/, ShowState /*show*/) override { return -1; }
  std::optional<ShellFailure> runInShell(const std::string& /*command*/, WindowStyle /*style*/) override {
    return ShellFailure{0, "Nothing is started"};
  }

 private:
  Host& disk_;
  std::map<std::string, std::string> written_;  // by upper-case name
  std::map<std::string, std::string> aliases_;
  std::vector<std::string> messages_;
};

}  // namespace kiv
