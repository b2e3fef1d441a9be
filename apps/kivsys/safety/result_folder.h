#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/safety/made_folder.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The folder of the results of a run. One that is missing is made, and locked against other runs, when the first
/// result is to be written.
class ResultFolder {
 public:
  /// The folder as the disk names it, and as messages do.
  ResultFolder(Machine& machine, const std::string& path, const std::string& typed)
      : path_(path), typed_(typed), folder_(machine, path, typed) {}

  const std::string& path() const { return path_; }
  const std::string& typed() const { return typed_; }
  bool isMissing() const { return folder_.isMissing(); }
  /// Why it cannot be made; nullopt when it can be, or is there.
  std::optional<std::string> refusal() const { return folder_.refusal(); }
  /// Makes it when it is missing. Returns the exit status of a run without it, after a line on standard error; with it,
  /// that of a normal end. Another run in the new folder is not waited for, as it may wait for this one.
  [[nodiscard]] int make(ConsoleHost& console) const;

 private:
  std::string path_;
  std::string typed_;
  PlannedFolder folder_;
};

}  // namespace kiv
