#pragma once

#include <string>
#include <vector>

#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "tests/support/fixed_machine.h"

namespace kiv::fuzz {

/// Files in memory, which can be made undeletable.
class FuzzFiles : public OverlayFiles {
 public:
  explicit FuzzFiles(Machine& machine) : OverlayFiles("C:\\KIV", machine) {}

  bool refusesDeletion = false;  ///< no file can be deleted

  bool deleteFile(const std::string& name) override { return !refusesDeletion && OverlayFiles::deleteFile(name); }
  std::vector<FolderEntry> listFolder(const std::string& /*folder*/) override {
    return {{"X1.MUS", false}, {"SUB", true}};
  }
};

/// Answers every question with Yes.
class AgreeingUser : public SilentUser {
 public:
  Answer show(const Message& message) override {
    const Answer answer = SilentUser::show(message);
    return answer == Answer::no ? Answer::yes : answer;
  }
  /// The text of the last message; "" when there was none.
  std::string lastText() const { return messages().empty() ? "" : messages().back().text; }
};

/// All that surrounds one run: files in memory, of which there are none yet.
struct FuzzHost {
  Host host() { return {files, user, programs, machine}; }

  test::FixedMachine machine;
  FuzzFiles files{machine};
  AgreeingUser user;
  NoPrograms programs;
};

/// A program just started on a host of its own.
struct FreshProgram : FuzzHost {
  KivSystem program{host()};
};

}  // namespace kiv::fuzz
