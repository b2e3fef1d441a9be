#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/console/console_user.h"
#include "platform/console/native_system.h"
#include "platform/host.h"

namespace kiv {

/// The platform's files, programs and clock, with a record of the files that were replaced.
class ConsoleSystem : public NativeSystem {
 public:
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override {
    auto failure = NativeSystem::replaceFile(name, bytes);
    if (!failure) {
      replacedFiles_.push_back(name);
    }
    return failure;
  }

  /// The files that replaceFile has written, in order.
  const std::vector<std::string>& replacedFiles() const { return replacedFiles_; }

 private:
  std::vector<std::string> replacedFiles_;
};

/// All that surrounds a run of the console program.
class ConsoleHost {
 public:
  ConsoleSystem& system() { return system_; }
  ConsoleUser& user() { return user_; }
  Host host() { return {system_, user_, system_, system_}; }

  /// The messages in the order in which they were shown.
  const std::vector<ShownMessage>& messages() const { return user_.messages(); }
  const std::vector<std::string>& replacedFiles() const { return system_.replacedFiles(); }

 private:
  ConsoleSystem system_;
  ConsoleUser user_{system_};
};

}  // namespace kiv
