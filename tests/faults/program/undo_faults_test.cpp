#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <iostream>
#include <set>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// A conversion that replaces a result, the report and the verdict, makes results and a folder, and is undone.
class UndoFaults : public testing::Test {
 protected:
  UndoFaults() {
    const WorkingFolder maker({});
    pages = {{"m/X001.MUS", maker.page(duo)},
             {"m/X002.MUS", maker.page(solo)},
             {"out/WORK0001.MUS", "old result"},
             {"run/KivSystem1.TXT", "old verdict"},
             {"run/KivSystem2.TXT", "old report"}};
    reset();
    before = snapshot();
  }

  void reset() const {
    work.reset(pages);
    for (const auto& [name, content] : pages) {
      const fs::path path = work.path() / name;
      fs::last_write_time(path, fs::file_time_type(std::chrono::hours(24)) + std::chrono::nanoseconds(12345));
      fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    }
  }
  /// Bytes, times and modes of all files, also of those that a killed program leaves beside its results.
  Files snapshot() const {
    Files all = work.files();
    std::erase_if(all, [](const auto& file) { return file.first == "log"; });
    for (auto& [name, content] : all) {
      struct stat status {};
      EXPECT_EQ(::stat((work.path() / name).c_str(), &status), 0);
      content += " " + std::to_string(status.st_mode);
      if (pages.contains(name)) {
        content += " " + std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
      }
    }
    for (const auto& entry : fs::recursive_directory_iterator(work.path())) {
      if (entry.is_directory()) {
        all[fs::relative(entry.path(), work.path()).string()] = "folder";
      }
    }
    return all;
  }
  /// The same without the replaced files that are kept for an undo.
  static Files withoutKeptFiles(Files all) {
    std::erase_if(all, [](const auto& file) { return file.first.find(".kivsys") != std::string::npos; });
    return all;
  }
  virtual std::vector<std::string> conversion() const { return conversionOf({"X001.MUS", "X002.MUS"}); }
  Ended convert(const Faults& faults) const { return work.kivsys(conversion(), faults); }
  Ended undo(const Faults& faults = {}) const { return work.kivsys({"undo", "run"}, faults); }
  std::vector<Call> callsOfConversion() const {
    reset();
    static_cast<void>(convert(logged()));
    return callsIn(work.files().at("log"));
  }
  std::vector<Call> callsOfUndo() const {
    reset();
    static_cast<void>(convert({}));
    static_cast<void>(undo(logged()));
    return callsIn(work.files().at("log"));
  }
  /// What a run has changed is undone, or the run has said that it cannot be.
  void expectUndone(const Ended& ended) {
    if (ended.error.find("this run cannot be undone: ") != std::string::npos) {
      EXPECT_EQ(undo().status, 2);
      ++notUndone;
      return;
    }
    const Ended undone = undo();
    EXPECT_TRUE(undone.status == 0 || snapshot() == before) << undone.error;
    EXPECT_EQ(snapshot(), before) << undone.error;
  }
  void expectUndoneAfterEveryKill();
  void expectUndoneAfterEveryFailure();
  Faults logged() const { return {{"LOG", (work.path() / "log").string()}}; }
  static std::string describe(const std::vector<Call>& calls, std::size_t call) {
    return std::to_string(call + 1) + ": " + calls[call].name + " " + calls[call].file;
  }

  WorkingFolder work{{}};
  Files pages;
  Files before;
  int notUndone = 0;
  std::ptrdiff_t mostTemporary = 0;  // files that a killed run has left beside its results
};

void UndoFaults::expectUndoneAfterEveryKill() {
  const std::vector<Call> calls = callsOfConversion();
  EXPECT_GT(calls.size(), 60U);
  for (const char* const after : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(calls, call) + (*after == '1' ? ", after" : ", before"));
      reset();
      const Ended ended = convert({{"CALL", std::to_string(call + 1)}, {"AFTER", after}});
      EXPECT_EQ(ended.status, -SIGKILL);
      const Files left = work.files();
      mostTemporary = std::max(mostTemporary, std::count_if(left.begin(), left.end(), [](const auto& file) {
                                 return isBesideResult(file.first);
                               }));
      expectUndone(ended);
    }
  }
  EXPECT_EQ(notUndone, 0);
}

void UndoFaults::expectUndoneAfterEveryFailure() {
  const std::vector<Call> calls = callsOfConversion();
  for (const int error : {EIO, ENOSPC}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(calls, call));
      reset();
      expectUndone(convert({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(error)}}));
    }
  }
  EXPECT_GT(notUndone, 0);
  std::cout << calls.size() << " calls, of " << 2 * calls.size() << " runs " << notUndone << " cannot be undone\n";
}

/// The same conversion, which writes results while it reads pages: which call has which number varies.
class BackgroundUndoFaults : public UndoFaults {
 protected:
  std::vector<std::string> conversion() const override { return backgroundConversionOf({"X001.MUS", "X002.MUS"}); }
};

/// The same with more results than are under way at a time.
class ManyResultsUndoFaults : public BackgroundUndoFaults {
 protected:
  ManyResultsUndoFaults() {
    const std::string page = pages.at("m/X002.MUS");
    pages.insert({{"m/X003.MUS", page}, {"m/X004.MUS", page}, {"m/X005.MUS", page}, {"out/WORK0004.MUS", "old"}});
    reset();
    before = snapshot();
  }
  std::vector<std::string> conversion() const override {
    return backgroundConversionOf({"X001.MUS", "X002.MUS", "X003.MUS", "X004.MUS", "X005.MUS"});
  }
};

TEST_F(UndoFaults, AfterAKillAtEveryCallUndoGivesTheStateBefore) {
  expectUndoneAfterEveryKill();
}

TEST_F(BackgroundUndoFaults, AfterAKillAtEveryCallUndoGivesTheStateBefore) {
  expectUndoneAfterEveryKill();
}

TEST_F(ManyResultsUndoFaults, AfterAKillAtEveryCallUndoGivesTheStateBefore) {
  expectUndoneAfterEveryKill();
  EXPECT_GE(mostTemporary, 2) << "an undo has removed several temporary files";
}

TEST_F(UndoFaults, AfterAFailureOfEveryCallUndoGivesTheStateBefore) {
  expectUndoneAfterEveryFailure();
}

TEST_F(BackgroundUndoFaults, AfterAFailureOfEveryCallUndoGivesTheStateBefore) {
  expectUndoneAfterEveryFailure();
}

TEST_F(UndoFaults, WithoutSecondNamesCopiesAreKept) {
  const std::vector<Call> calls = callsOfConversion();
  for (std::size_t call = 0; call < calls.size(); ++call) {
    if (calls[call].name == "linkat") {
      reset();
      const Ended ended = convert({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(EPERM)}});
      EXPECT_EQ(ended.status, 0) << ended.error;
      expectUndone(ended);
    }
  }
  EXPECT_EQ(notUndone, 0);
}

TEST_F(UndoFaults, AKilledUndoIsFinishedByTheNext) {
  const std::vector<Call> calls = callsOfUndo();
  EXPECT_GT(calls.size(), 20U);
  for (const char* const after : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(calls, call) + (*after == '1' ? ", after" : ", before"));
      reset();
      EXPECT_EQ(convert({}).status, 0);
      EXPECT_EQ(undo({{"CALL", std::to_string(call + 1)}, {"AFTER", after}}).status, -SIGKILL);
      const Ended again = undo();
      EXPECT_TRUE(again.status == 0 || snapshot() == before) << again.error;
      EXPECT_EQ(snapshot(), before);
    }
  }
}

TEST_F(UndoFaults, AnUndoThatFailsSaysSoAndIsFinishedByTheNext) {
  const std::vector<Call> calls = callsOfUndo();
  for (std::size_t call = 0; call < calls.size(); ++call) {
    SCOPED_TRACE(describe(calls, call));
    reset();
    EXPECT_EQ(convert({}).status, 0);
    const Ended ended = undo({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(EIO)}});
    EXPECT_TRUE(ended.status == 0 || !ended.error.empty());
    static_cast<void>(undo());
    EXPECT_EQ(snapshot(), before) << ended.error;
  }
}

/// An undo that leaves changed files: a result that had replaced one was edited since, and the report was deleted.
class KeepChangedFaults : public UndoFaults {
 protected:
  void convertAndChange() const {
    reset();
    EXPECT_EQ(convert({}).status, 0);
    work.write("out/WORK0001.MUS", "edited");
    fs::remove(work.path() / "run/KivSystem2.TXT");
  }
  Ended keepChanged(const Faults& faults = {}) const { return work.kivsys({"undo", "run", "--keep-changed"}, faults); }
  std::vector<Call> callsOfKeepChanged() const {
    convertAndChange();
    static_cast<void>(keepChanged(logged()));
    return callsIn(work.files().at("log"));
  }
  void expectNothingLost() const {
    Files files = work.files();
    files.erase("log");
    EXPECT_EQ(files, (Files{{"m/X001.MUS", pages.at("m/X001.MUS")},
                            {"m/X002.MUS", pages.at("m/X002.MUS")},
                            {"out/WORK0001.MUS", "edited"},
                            {"out/WORK0001.MUS.old", "old result"},
                            {"run/KivSystem1.TXT", "old verdict"},
                            {"run/KivSystem2.TXT", "old report"}}));
  }
};

TEST_F(KeepChangedFaults, AKilledOneLosesNothingAndIsFinishedByTheNext) {
  const std::vector<Call> calls = callsOfKeepChanged();
  EXPECT_GT(calls.size(), 20U);
  for (const char* const after : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(calls, call) + (*after == '1' ? ", after" : ", before"));
      convertAndChange();
      EXPECT_EQ(keepChanged({{"CALL", std::to_string(call + 1)}, {"AFTER", after}}).status, -SIGKILL);
      static_cast<void>(keepChanged());
      expectNothingLost();
    }
  }
}

/// A file that cannot be read counts as one that has changed, so it may stay with the old one beside it.
TEST_F(KeepChangedFaults, OneThatFailsLosesNothing) {
  const std::vector<Call> calls = callsOfKeepChanged();
  for (std::size_t call = 0; call < calls.size(); ++call) {
    SCOPED_TRACE(describe(calls, call));
    convertAndChange();
    const Ended ended = keepChanged({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(EIO)}});
    EXPECT_TRUE(ended.status == 0 || !ended.error.empty());
    static_cast<void>(keepChanged());
    std::set<std::string> contents;
    for (const auto& [name, content] : work.files()) {
      contents.insert(content);
    }
    for (const char* const precious : {"edited", "old result", "old report", "old verdict"}) {
      EXPECT_TRUE(contents.contains(precious)) << precious;
    }
  }
}

TEST_F(UndoFaults, ARunKilledAtItsBeginningLeavesTheOneBeforeItOrIsUndoneItself) {
  const std::vector<Call> calls = callsOfConversion();
  reset();
  EXPECT_EQ(convert({}).status, 0);
  static_cast<void>(convert(logged()));
  const std::vector<Call> second = callsIn(work.files().at("log"));
  for (std::size_t call = 0; call < second.size(); ++call) {
    SCOPED_TRACE(describe(second, call));
    reset();
    EXPECT_EQ(convert({}).status, 0);
    const Files between = withoutKeptFiles(snapshot());
    EXPECT_EQ(convert({{"CALL", std::to_string(call + 1)}}).status, -SIGKILL);
    const bool hasChanged = withoutKeptFiles(snapshot()) != between;
    const Ended undone = undo();
    EXPECT_EQ(undone.status, 0) << undone.error;
    EXPECT_EQ(withoutKeptFiles(snapshot()), hasChanged ? between : before);
  }
}

}  // namespace
}  // namespace kiv::test
