#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/console/console_system.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {

/// Lists what it is notified of, and refuses a file. What it does takes some time, as on a slow disk.
class SlowJournal : public ChangeJournal {
 public:
  std::string refused;
  std::string awaited;  // a file that waits until open() is called
  std::vector<std::string> replaced;

  void open() {
    isOpen_ = true;
    isOpen_.notify_all();
  }
  std::string temporaryMark() const override { return "run"; }

  std::optional<std::string> beforeFolder(const std::string& /*path*/) override { return std::nullopt; }
  std::optional<std::string> beforeReplace(const std::string& path, const std::string& /*target*/,
                                           std::string_view /*bytes*/) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    replaced.push_back(path.substr(path.rfind('/') + 1));
    if (replaced.back() == awaited) {
      isOpen_.wait(false);
    }
    return replaced.back() == refused ? std::optional<std::string>("no space") : std::nullopt;
  }
  std::optional<std::string> beforeOpen(const std::string& /*path*/) override { return std::nullopt; }
  std::optional<std::string> beforeDelete(const std::string& /*path*/) override { return std::nullopt; }
  void afterWrite(const std::string& /*path*/, Sha256 /*written*/) noexcept override {}

 private:
  std::atomic<bool> isOpen_ = false;
};

/// A run that writes results while it reads pages.
class BackgroundWriting : public testing::Test {
 protected:
  BackgroundWriting() {
    disk.addFile("P1.MUS", "the page");
    system.bindPages({{disk.core("P1.MUS"), disk.path("P1.MUS").string()}});
    system.setJournal(journal);
    system.writeInBackground();
  }
  std::string page() { return system.upperCase(disk.core("P1.MUS")); }
  /// The names of the files that fail, in order.
  std::string replace(const std::string& name, const std::string& content) {
    const auto failure = system.replaceSoon(disk.core(name), std::make_shared<const std::string>(content));
    return failure ? failure->name.substr(failure->name.rfind('\\') + 1) + ": " + failure->reason : "";
  }
  /// The failure when that number of files is replaced.
  std::string failureOf(int files) {
    std::string failure;
    for (int i = 1; i <= files && failure.empty(); ++i) {
      failure = replace("W" + std::to_string(i), "result");
    }
    return failure.empty() ? finish() : failure;
  }
  std::size_t temporaryFiles() const {
    std::size_t count = 0;
    for (const std::string& name : disk.entries()) {
      count += name.starts_with(temporaryStart("run")) ? 1U : 0U;
    }
    return count;
  }
  std::string finish() {
    const auto failure = system.finishReplacing();
    return failure ? failure->name.substr(failure->name.rfind('\\') + 1) + ": " + failure->reason : "";
  }

  TemporaryFolder disk;
  SlowJournal journal;
  ConsoleSystem system;
};

}  // namespace kiv::test
