#pragma once

#include <csignal>
#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/posix/posix_system.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {

/// While it lives, no file of this process grows beyond this size, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{bytes, old_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, signal_);
  }

 private:
  rlimit old_{};
  void (*signal_)(int);
};

/// The system on the real disk, in a folder of its own.
class PosixDisk : public testing::Test {
 protected:
  PosixDisk() : before_(std::filesystem::current_path()) {}
  ~PosixDisk() override { std::filesystem::current_path(before_); }

  /// What the system reads under a name below the folder.
  std::string read(const std::string& name) { return readWhole(system, disk.core(name)).value_or("(no file)"); }

  /// Writes through openOutput; false when the file does not open or takes nothing.
  bool write(const std::string& name, std::string_view text) {
    const auto file = system.openOutput(disk.core(name));
    return file != nullptr && file->write(text) == std::nullopt;
  }

  mode_t modeOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(::stat(disk.path(name).c_str(), &status), 0);
    return status.st_mode & 07777U;
  }

  void setMode(const std::string& name, mode_t mode) const { ASSERT_EQ(::chmod(disk.path(name).c_str(), mode), 0); }

  void setChanged(const std::string& name, std::time_t seconds) const {
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, disk.path(name).c_str(), times, 0), 0);
  }

  TemporaryFolder disk;
  PosixSystem system;

 private:
  std::filesystem::path before_;
};

}  // namespace kiv::test
