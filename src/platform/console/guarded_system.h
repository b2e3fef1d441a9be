#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/console/file_sum.h"
#include "platform/console/native_system.h"

namespace kiv {

/// How the console program treats files that others may touch as well.
enum class Guard {
  on,
  off,  ///< as the panel does
};

/// The platform's files, programs and clock, for a run of the console program: records what was written, and is a point
/// where the run can be stopped whenever a file is opened or replaced.
///
/// With the guard, what is opened for writing is a file of its own: neither what a link of that name leads to, nor a
/// pipe. And a file that the run has written so is known when it is read back: one that another program has changed
/// ends the program.
class GuardedSystem : public NativeSystem {
 public:
  explicit GuardedSystem(Guard guard = Guard::on);

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;

  std::optional<std::string> createFile(const std::string& name, std::string_view bytes) override;

  bool isGuarded() const { return guard_ == Guard::on; }
  /// What was written, in words, with paths of the disk; "nothing" when that is so.
  std::string writtenWords();

  /// What a run has written into a file.
  struct Written {
    FileSum sum;
    bool complete = true;  ///< the run was not stopped while it wrote the file
  };

 protected:
  /// A file has been replaced without replaceFile.
  void addReplaced(const std::string& name);

 private:
  struct OwnFile {
    std::string name;  // as the run has it
    std::shared_ptr<Written> written;
  };

  Guard guard_;
  std::size_t replacedCount_ = 0;
  std::string firstReplaced_;
  std::string lastReplaced_;
  std::map<std::string, OwnFile> ownFiles_;  // those opened for writing, by upper-case name
};

}  // namespace kiv
