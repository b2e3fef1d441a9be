#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <string>
#include <system_error>

#include <unistd.h>

#include "platform/posix/posix_system.h"

namespace kiv::test {

/// A folder of the test's own on the real disk, gone with all that it holds when the test ends.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string made = (std::filesystem::temp_directory_path() / "kiv-test-XXXXXX").string();
    if (::mkdtemp(made.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = std::filesystem::canonical(made);
    std::filesystem::permissions(path_, std::filesystem::perms(0755));
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    unlock(path_);
    std::filesystem::remove_all(path_, ignored);
  }

  std::filesystem::path path(const std::string& name = "") const { return name.empty() ? path_ : path_ / name; }
  /// The name, with slashes below the folder, as the core writes it.
  std::string core(const std::string& name = "") const { return PosixSystem::coreName(path_.string() + "/" + name); }

  void addFolder(const std::string& name) const { std::filesystem::create_directories(path(name)); }
  void addFile(const std::string& name, const std::string& content = "") const {
    std::ofstream(path(name), std::ios::binary) << content;
  }
  std::string file(const std::string& name) const {
    std::ifstream in(path(name), std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "(no file)";
  }
  /// The names of all that lies in the folder.
  std::set<std::string> entries() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

 private:
  static void unlock(const std::filesystem::path& folder) {
    std::error_code ignored;
    std::filesystem::permissions(folder, std::filesystem::perms(0755), ignored);
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
      if (entry.is_directory(ignored) && !entry.is_symlink(ignored)) {
        unlock(entry.path());
      }
    }
  }

  std::filesystem::path path_;
};

/// While it lives, the test has only the rights of an ordinary user on the disk.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t nobody = 65534;
    changed_ = ::geteuid() == 0 && ::seteuid(nobody) == 0;
    if (::geteuid() == 0) {
      throw std::runtime_error("the administrator's rights stay");
    }
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (changed_ && ::seteuid(0) != 0) {
      std::abort();
    }
  }

 private:
  bool changed_ = false;
};

}  // namespace kiv::test
