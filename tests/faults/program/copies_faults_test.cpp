#include <cerrno>
#include <csignal>

#include <gtest/gtest.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// A command that writes files from pages, with each call failing, and killed at each call.
class CopiesFaults : public testing::Test {
 protected:
  using Command = std::vector<std::string>;

  CopiesFaults() {
    const WorkingFolder maker({});
    const std::string whole = maker.page(duo);
    before = {{"m/X001.MUS", whole},
              {"m/X002.MUS", maker.page(solo)},
              {"m/Y001.MUS", whole.substr(0, whole.size() - 40) + std::string(12, '\0')}};
    reset();
  }

  void reset() const {
    work.reset(before);
    fs::remove_all(work.path() / "fixed");
  }
  /// All files but the log, and all folders.
  Files snapshot() const {
    Files all = work.files();
    all.erase("log");
    for (const auto& entry : fs::recursive_directory_iterator(work.path())) {
      if (entry.is_directory()) {
        all[fs::relative(entry.path(), work.path()).string()] = "folder";
      }
    }
    return all;
  }
  /// The calls of a run without faults; what it makes is kept in `after`.
  std::vector<Call> callsOf(const Command& command) {
    reset();
    start = snapshot();
    const Ended ended = work.kivsys(command, {{"LOG", (work.path() / "log").string()}});
    EXPECT_EQ(ended.status, 0) << ended.error;
    after = snapshot();
    EXPECT_NE(after, start);
    return callsIn(work.files().at("log"));
  }
  /// Every file is there as it was, or as the whole run makes it; others have temporary names.
  void expectWholeFiles() const {
    const Files now = snapshot();
    for (const auto& [name, content] : start) {
      EXPECT_TRUE(now.contains(name)) << name;
    }
    for (const auto& [name, content] : now) {
      const auto old = start.find(name);
      const auto made = after.find(name);
      const bool isOld = old != start.end() && old->second == content;
      const bool isMade = made != after.end() && made->second == content;
      EXPECT_TRUE(isOld || isMade || isBesideResult(name) || isKept(name)) << name;
    }
  }
  void expectUndone(const std::string& folder) const {
    if (!fs::exists(work.path() / folder) || snapshot() == start) {
      return;
    }
    const Ended undone = work.kivsys({"undo", folder});
    EXPECT_EQ(snapshot(), start) << undone.error;
  }
  /// Runs the command with each call failing. If it can be undone, an undo of the folder gives the state before.
  void tryFailures(const Command& command, const std::string& undoneIn = "") {
    const std::vector<Call> calls = callsOf(command);
    for (const int error : {EIO, ENOSPC}) {
      for (std::size_t call = 0; call < calls.size(); ++call) {
        SCOPED_TRACE(std::to_string(call + 1) + ": " + calls[call].name + " " + calls[call].file);
        reset();
        const Ended ended =
            work.kivsys(command, {{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(error)}});
        EXPECT_TRUE(ended.status == 0 || !ended.error.empty());
        EXPECT_TRUE(ended.status != 0 || withoutTemporary(snapshot()) == withoutTemporary(after)) << ended.error;
        expectWholeFiles();
        if (!undoneIn.empty() && ended.error.find("this run cannot be undone: ") == std::string::npos) {
          expectUndone(undoneIn);
        }
      }
    }
  }
  /// The same, killed before and after each call.
  void tryKills(const Command& command, const std::string& undoneIn = "") {
    const std::vector<Call> calls = callsOf(command);
    for (const char* const when : {"0", "1"}) {
      for (std::size_t call = 0; call < calls.size(); ++call) {
        SCOPED_TRACE(std::to_string(call + 1) + ": " + calls[call].name + (*when == '1' ? ", after" : ", before"));
        reset();
        EXPECT_EQ(work.kivsys(command, {{"CALL", std::to_string(call + 1)}, {"AFTER", when}}).status, -SIGKILL);
        expectWholeFiles();
        if (!undoneIn.empty()) {
          expectUndone(undoneIn);
        }
      }
    }
  }
  /// Files that are kept for an undo have the name of their run.
  static Files withoutTemporary(Files files) {
    std::erase_if(files, [](const auto& file) { return isBesideResult(file.first) || isKept(file.first); });
    return files;
  }

  const Command fix = {"fix", "m/X001.MUS", "m/X002.MUS", "--map", "102=105", "-o", "fixed"};
  const Command sort = {"sort", "m/X001.MUS"};
  const Command recover = {"recover", "m/Y001.MUS", "-o", "m/R001.MUS"};
  const Command suggest = {"suggest", "m/X001.MUS", "m/X002.MUS", "-o", "m/c.csv"};

  WorkingFolder work{{}};
  Files before;
  Files start;
  Files after;
};

TEST_F(CopiesFaults, FixIntoANewFolderEndsWithWholeCopiesThatCanBeUndoneAfterEachFailure) {
  tryFailures(fix, "fixed");
}

TEST_F(CopiesFaults, FixIntoANewFolderCanBeUndoneAfterEachKill) {
  tryKills(fix, "fixed");
}

TEST_F(CopiesFaults, SortCanBeUndoneAfterEachFailure) {
  tryFailures(sort, "m");
}

TEST_F(CopiesFaults, SortCanBeUndoneAfterEachKill) {
  tryKills(sort, "m");
}

TEST_F(CopiesFaults, RecoverWritesAWholePageOrNone) {
  tryFailures(recover);
  tryKills(recover);
}

TEST_F(CopiesFaults, SuggestWritesAWholeTableOrNone) {
  tryFailures(suggest);
  tryKills(suggest);
}

}  // namespace
}  // namespace kiv::test
