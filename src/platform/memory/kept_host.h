#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// A host over another one that keeps all writes and deletes in memory. What was written is read back from there, the
/// rest is read through; nothing outside changes, and no program is started. What cannot be written for want of room or
/// permission looks as if it could be; a file is not put in a folder that is not there.
class KeptHost : public Host {
 public:
  /// The world must outlive this host.
  explicit KeptHost(Host& world) : world_(world) {}

  /// A file that was put in its place whole.
  struct Replaced {
    std::string name;
    bool existed = false;  ///< there was a file of that name before

    bool operator==(const Replaced&) const = default;
  };
  /// In the order in which they were first put there.
  const std::vector<Replaced>& replaced() const { return replaced_; }

  Answer message(Icon icon, std::string_view text, Buttons buttons) override {
    return world_.message(icon, text, buttons);
  }
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(Pointer pointer) override { world_.setPointer(pointer); }
  void processEvents() override { world_.processEvents(); }
  void showProgress(int done, int all, std::string_view plural) override { world_.showProgress(done, all, plural); }
  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& folder) override { return world_.listFolder(folder); }
  std::string currentFolder() override { return world_.currentFolder(); }
  std::optional<std::string> shortName(const std::string& path) override { return world_.shortName(path); }
  LocalTime now() override { return world_.now(); }
  std::string upperCase(std::string_view text) override { return world_.upperCase(text); }
  std::size_t characterCount(std::string_view text) override { return world_.characterCount(text); }
  std::string profileKey(const std::string& key) override { return world_.profileKey(key); }
  std::int32_t runProcess(const std::string& /*commandLine*/, ShowState /*show*/) override { return 0; }
  std::optional<ShellFailure> runInShell(const std::string& /*command*/, WindowStyle /*style*/) override {
    return std::nullopt;
  }

 private:
  std::string key(const std::string& name);
  bool hasFolder(const std::string& place);

  Host& world_;
  std::map<std::string, std::shared_ptr<std::string>> files_;  // by full name in capitals; null is deleted
  std::vector<Replaced> replaced_;
  std::set<std::string> places_;         // of replaced_, the keys
  std::map<std::string, bool> folders_;  // whether they are there
};

}  // namespace kiv
