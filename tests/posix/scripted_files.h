#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/console/replace_queue.h"

namespace kiv::test {

using Failure = QueuedFile::Failure;

/// What the files of a test have done, and what they do.
struct Script {
  std::mutex mutex;  // of what follows
  std::vector<std::string> done;
  int prepared = 0;      // files beside their places
  int mostPrepared = 0;  // at a time
  int space = 100;       // for this number of them

  std::function<Failure(const std::string& step)> at = [](const std::string&) { return std::nullopt; };

  Failure perform(const std::string& step) {
    auto failure = at(step);
    const std::lock_guard lock(mutex);
    done.push_back(failure ? step + " fails" : step);
    return failure;
  }
  /// A step that needs space for a file.
  Failure prepare(const std::string& step) {
    auto failure = at(step);
    const std::lock_guard lock(mutex);
    if (!failure && prepared == space) {
      failure = "no space";
    }
    done.push_back(failure ? step + " fails" : step);
    prepared += failure ? 0 : 1;
    mostPrepared = std::max(mostPrepared, prepared);
    return failure;
  }
  /// Whether the step has been taken that many times at least.
  bool has(const std::string& step, int times = 1) {
    const std::lock_guard lock(mutex);
    return std::count(done.begin(), done.end(), step) >= times;
  }
  /// Waits for a step of another thread.
  void waitFor(const std::string& step, int times = 1) {
    EXPECT_TRUE(becomes([&] { return has(step, times); })) << step;
  }
  void waitForAPreparedFile() {
    EXPECT_TRUE(becomes([&] {
      const std::lock_guard lock(mutex);
      return prepared > 0;
    }));
  }
  /// Waits until it is so. False when that takes too long.
  static bool becomes(const std::function<bool()>& isSo) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isSo() && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return isSo();
  }
  void drop() {
    const std::lock_guard lock(mutex);
    --prepared;
  }
};

class ScriptedFile : public QueuedFile {
 public:
  ScriptedFile(Script& script, int number) : script_(script), number_(std::to_string(number)) {}
  ~ScriptedFile() override { drop(); }

  Failure enter() override { return script_.perform("enter " + number_); }
  Failure prepare() override {
    auto failure = script_.prepare("prepare " + number_);
    isHere_ = !failure;
    return failure;
  }
  Failure place() override {
    auto failure = script_.perform("place " + number_);
    drop();
    return failure;
  }
  void discard() override { drop(); }

 private:
  void drop() {
    if (isHere_) {
      script_.drop();
      isHere_ = false;
    }
  }

  Script& script_;
  std::string number_;
  bool isHere_ = false;
};

class ReplaceQueues : public testing::Test {
 protected:
  void add(int number) {
    files.push_back(std::make_unique<ScriptedFile>(script, number));
    queue.add(*files.back());
  }
  void add(int first, int last) {
    for (int number = first; number <= last; ++number) {
      add(number);
    }
  }
  /// The texts of the failures until the queue is empty.
  std::string finish() {
    std::string failures;
    while (!queue.isEmpty()) {
      const auto failure = queue.waitForFirst();
      failures += failure ? *failure : "";
    }
    return failures;
  }
  /// The steps but for the preparations, in order.
  std::vector<std::string> inTurn() {
    std::vector<std::string> steps = script.done;
    std::erase_if(steps, [](const std::string& step) { return step.starts_with("prepare"); });
    return steps;
  }

  Script script;
  std::vector<std::unique_ptr<ScriptedFile>> files;
  ReplaceQueue queue;
};

}  // namespace kiv::test
