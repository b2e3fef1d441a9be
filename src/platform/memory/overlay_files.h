#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"
#include "platform/machine.h"

namespace kiv {

/// Files in memory, over other files or over none: what is written or deleted here is kept in memory, everything else
/// is read from below. Names are compared regardless of case.
///
/// Writing succeeds also where a real disk has no space or no permission; but with files below, no file is put into a
/// folder that they do not have.
class OverlayFiles : public Files {
 public:
  /// The files below and the machine must outlive this object.
  OverlayFiles(Files& below, Machine& machine) : below_(&below), machine_(machine) {}
  /// Nothing below. Names without a folder lie in the current folder, which has no trailing backslash.
  OverlayFiles(std::string currentFolder, Machine& machine)
      : currentFolder_(std::move(currentFolder)), machine_(machine) {}

  /// A file that replaceFile wrote.
  struct Replaced {
    std::string name;
    bool existed = false;  ///< there was a file of that name before

    bool operator==(const Replaced&) const = default;
  };
  /// In the order in which they were first put there.
  const std::vector<Replaced>& replaced() const { return replaced_; }
  /// The names of these files.
  std::vector<std::string> replacedNames() const;

  void addFile(const std::string& name, std::string content);
  /// Lets a folder, whose name ends with a backslash, take files although those below do not have it.
  void addFolder(const std::string& name);
  /// Makes a file below readable under its name in any case, whatever else is there.
  void addAlias(const std::string& name) { aliases_[fullName(name)] = name; }
  /// The content of a file that is kept here; null when there is none.
  const std::string* find(const std::string& name) const;
  /// The names of all files kept here: full, in upper case.
  std::vector<std::string> names() const;
  /// Forgets all that is kept here.
  void clear();

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  bool willOpen(const std::string& name, Fetch fetch) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  /// The entries below; the files kept here are not listed.
  std::vector<FolderEntry> listFolder(const std::string& folder) override;
  std::string currentFolder() override;
  std::optional<std::string> shortName(const std::string& path) override;

 protected:
  /// The name with its folder, in upper case.
  std::string fullName(const std::string& name) const;

  std::string currentFolder_;  // with no files below

 private:
  bool hasFolder(const std::string& key);
  const std::string& nameBelow(const std::string& name, const std::string& key) const;

  Files* below_ = nullptr;
  Machine& machine_;
  std::map<std::string, std::shared_ptr<std::string>> files_;  // by full name in upper case; null is deleted
  std::map<std::string, std::string> aliases_;
  std::vector<Replaced> replaced_;
  std::set<std::string> replacedKeys_;
  std::map<std::string, bool> folders_;  // whether they exist below
};

}  // namespace kiv
