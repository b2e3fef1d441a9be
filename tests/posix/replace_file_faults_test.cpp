#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mus/writer.h"
#include "platform/posix/posix_system.h"
#include "tests/posix/temporary_folder.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

// The functions of the C library through which a file is replaced are defined in this program once more, and so are
// called in the library's place. They pass on what they are asked for, unless an order says that a call goes wrong.

namespace kiv::test {
namespace {

enum class Trouble {
  none,
  fails,
  takesHalf,     // of what is to be written
  killsBefore,   // the process ends before the call does anything,
  killsAfter,    // right after the call, before its result is seen,
  killsHalfway,  // or when half of what is to be written is
};

/// What goes wrong, and when. Plain numbers, as the functions below run before any constructor.
struct Order {
  bool counting = false;
  int call = 0;         // the call that goes wrong, counted from 1; 0 is none
  bool onward = false;  // all calls behind it go wrong too
  Trouble trouble = Trouble::none;
  int error = 0;                // why a call fails
  std::size_t room = SIZE_MAX;  // bytes that the disk still takes
};

Order order;
int callsMade = 0;
constexpr int mostCalls = 64;
const char* callNames[mostCalls];

[[noreturn]] void die() {
  ::kill(::getpid(), SIGKILL);
  ::_exit(1);
}

Trouble troubleAt(const char* name) {
  if (!order.counting || callsMade == mostCalls) {
    return Trouble::none;
  }
  callNames[callsMade++] = name;
  const bool hit = callsMade == order.call || (order.onward && order.call != 0 && callsMade > order.call);
  if (hit && order.trouble == Trouble::killsBefore) {
    die();
  }
  return hit ? order.trouble : Trouble::none;
}

template <typename Function>
Function* next(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

template <typename Function, typename... Arguments>
int orderly(const char* name, Arguments... arguments) {
  const Trouble trouble = troubleAt(name);
  if (trouble == Trouble::fails) {
    errno = order.error;
    return -1;
  }
  const int result = next<Function>(name)(arguments...);
  if (trouble == Trouble::killsAfter) {
    die();
  }
  return result;
}

}  // namespace
}  // namespace kiv::test

extern "C" {

int mkstemp(char* name) {
  return kiv::test::orderly<int(char*)>("mkstemp", name);
}

int stat(const char* path, struct stat* status) noexcept {
  return kiv::test::orderly<int(const char*, struct stat*)>("stat", path, status);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  using kiv::test::Trouble;
  const Trouble trouble = kiv::test::troubleAt("write");
  if (trouble == Trouble::fails || (kiv::test::order.counting && kiv::test::order.room == 0 && count > 0)) {
    errno = trouble == Trouble::fails ? kiv::test::order.error : ENOSPC;
    return -1;
  }
  const bool half = trouble == Trouble::takesHalf || trouble == Trouble::killsHalfway;
  std::size_t taken = half ? (count + 1) / 2 : count;
  if (kiv::test::order.counting) {
    taken = std::min(taken, kiv::test::order.room);
    kiv::test::order.room -= kiv::test::order.room == SIZE_MAX ? 0 : taken;
  }
  const ssize_t result = kiv::test::next<ssize_t(int, const void*, std::size_t)>("write")(file, bytes, taken);
  if (trouble == Trouble::killsAfter || trouble == Trouble::killsHalfway) {
    kiv::test::die();
  }
  return result;
}

int fchmod(int file, mode_t mode) noexcept {
  return kiv::test::orderly<int(int, mode_t)>("fchmod", file, mode);
}

int fsync(int file) {
  return kiv::test::orderly<int(int)>("fsync", file);
}

int rename(const char* from, const char* to) noexcept {
  return kiv::test::orderly<int(const char*, const char*)>("rename", from, to);
}

int unlink(const char* path) noexcept {
  return kiv::test::orderly<int(const char*)>("unlink", path);
}

int close(int file) {
  using kiv::test::Trouble;
  const Trouble trouble = kiv::test::troubleAt("close");
  const int result = kiv::test::next<int(int)>("close")(file);  // a file whose close fails is closed all the same
  if (trouble == Trouble::killsAfter) {
    kiv::test::die();
  }
  if (trouble == Trouble::fails) {
    errno = kiv::test::order.error;
    return -1;
  }
  return result;
}

}  // extern "C"

namespace kiv::test {
namespace {

using Names = std::set<std::string>;

const std::string oldPage = "the old page, which is the longer one";
const std::string newPage = "the new page";
const std::string noFile = "(no file)";
const std::string noSpace = "No space left on device";

/// The host below the console's, with messages that are only kept.
class QuietSystem : public PosixSystem {
 public:
  Answer message(Icon icon, std::string_view text, Buttons buttons) override {
    messages.push_back({icon, std::string(text), buttons});
    return Answer::ok;
  }
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(Pointer /*pointer*/) override {}
  void processEvents() override {}
  void showProgress(int /*done*/, int /*all*/, std::string_view /*plural*/) override {}

  std::vector<Message> messages;
};

/// While it lives, calls are counted and go wrong as ordered.
class Under {
 public:
  explicit Under(Order given) {
    callsMade = 0;
    order = given;
    order.counting = true;
  }
  Under(const Under&) = delete;
  Under& operator=(const Under&) = delete;
  ~Under() { order = {}; }
};

/// The calls of the last run, in order.
std::vector<std::string> calls() {
  return {callNames, callNames + callsMade};
}

std::size_t indexOf(int call) {
  return static_cast<std::size_t>(call - 1);
}

/// Whether the run reached the call that was to go wrong.
bool reached(int call) {
  return callsMade >= call;
}

/// The number of the first call of this name in the last run; more than there were when it made none.
int callOf(const char* name) {
  const std::vector<std::string> made = calls();
  return static_cast<int>(std::find(made.begin(), made.end(), name) - made.begin()) + 1;
}

/// Without them a file is replaced none the worse: looking at what is there, and the close of a file that has been
/// flushed to the disk.
bool isHarmless(const std::string& call) {
  return call == "stat" || call == "close";
}

int openFiles() {
  const std::filesystem::directory_iterator open("/proc/self/fd");
  return static_cast<int>(std::distance(begin(open), end(open)));
}

bool isStray(const std::string& name) {
  const std::string pattern = ".kiv-XXXXXX";
  return name.starts_with(".kiv-") && name.size() == pattern.size();
}

/// Replaces, or makes, a page in a folder of its own.
class ReplaceFaults : public testing::TestWithParam<bool> {
 protected:
  /// Parameter: whether there is an old page.
  void prepare(const TemporaryFolder& disk) const {
    if (GetParam()) {
      disk.addFile("a.mus", oldPage);
    }
  }
  static std::string before() { return GetParam() ? oldPage : noFile; }
  static Names entriesBefore() { return GetParam() ? Names{"a.mus"} : Names{}; }

  /// Replaces the page under the order.
  static std::optional<std::string> replace(const TemporaryFolder& disk, Order given,
                                            const std::string& page = newPage) {
    QuietSystem host;
    const std::string name = disk.core("a.mus");
    const Under trouble(given);
    return host.replaceFile(name, page);
  }
  static void expectReplaced(const TemporaryFolder& disk, const std::string& page = newPage) {
    EXPECT_EQ(disk.file("a.mus"), page);
    EXPECT_EQ(disk.entries(), Names{"a.mus"});
  }
  void expectAsBefore(const TemporaryFolder& disk) const {
    EXPECT_EQ(disk.file("a.mus"), before());
    EXPECT_EQ(disk.entries(), entriesBefore());
  }

  /// Runs with the trouble at the first call, then at the second and so on, until a run comes to its end before it.
  /// Each run has a folder of its own.
  void atEveryCall(const std::function<bool(int call, const TemporaryFolder& disk)>& run) {
    int call = 1;
    for (bool goesOn = true; goesOn; ++call) {
      ASSERT_LT(call, mostCalls);
      SCOPED_TRACE("call " + std::to_string(call));
      const TemporaryFolder disk;
      prepare(disk);
      goesOn = run(call, disk);
    }
    EXPECT_GT(call, 7) << "there are too few calls that could go wrong";
  }
};

INSTANTIATE_TEST_SUITE_P(Pages, ReplaceFaults, testing::Values(true, false),
                         [](const auto& page) { return page.param ? "Old" : "None"; });

TEST_P(ReplaceFaults, TheNewPageIsOnTheDiskBeforeItTakesThePlace) {
  const TemporaryFolder disk;
  prepare(disk);
  EXPECT_EQ(replace(disk, {}), std::nullopt);
  expectReplaced(disk);
  std::vector<std::string> made = calls();
  std::erase_if(made, isHarmless);
  EXPECT_EQ(made, (std::vector<std::string>{"mkstemp", "write", "fchmod", "fsync", "rename"}));
}

TEST_P(ReplaceFaults, AFailureAnywhereIsReportedAndLeavesThingsAsTheyWere) {
  for (const int error : {ENOSPC, EIO, EDQUOT, EROFS}) {
    const std::string words = std::generic_category().message(error);
    atEveryCall([&](int call, const TemporaryFolder& disk) {
      const int open = openFiles();
      const auto failure = replace(disk, {.call = call, .trouble = Trouble::fails, .error = error});
      EXPECT_EQ(openFiles(), open);
      if (!reached(call) || isHarmless(callNames[indexOf(call)])) {
        EXPECT_EQ(failure, std::nullopt);
        expectReplaced(disk);
        return reached(call);
      }
      EXPECT_EQ(failure, words) << callNames[indexOf(call)];
      expectAsBefore(disk);
      EXPECT_EQ(replace(disk, {}), std::nullopt);
      expectReplaced(disk);
      return true;
    });
  }
}

TEST_P(ReplaceFaults, ADiskThatFailsForGoodLeavesTheOldPageWhole) {
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    const auto failure = replace(disk, {.call = call, .onward = true, .trouble = Trouble::fails, .error = ENOSPC});
    const bool replaced = !reached(call) || call > callOf("rename");
    EXPECT_EQ(failure, replaced ? std::nullopt : std::optional(noSpace));
    EXPECT_EQ(disk.file("a.mus"), replaced ? newPage : before());
    Names others = disk.entries();
    others.erase("a.mus");
    EXPECT_LE(others.size(), 1U) << "what cannot be removed is left";
    EXPECT_TRUE(std::all_of(others.begin(), others.end(), isStray));
    return reached(call);
  });
}

TEST_P(ReplaceFaults, ADiskTakesThePageWholeOrNotAtAll) {
  for (std::size_t room = 0; room <= newPage.size(); ++room) {
    const TemporaryFolder disk;
    prepare(disk);
    const auto failure = replace(disk, {.room = room});
    if (room < newPage.size()) {
      EXPECT_EQ(failure, noSpace) << room;
      expectAsBefore(disk);
    } else {
      EXPECT_EQ(failure, std::nullopt);
      expectReplaced(disk);
    }
  }
}

TEST_P(ReplaceFaults, APageThatIsTakenInPiecesIsWhole) {
  const TemporaryFolder disk;
  prepare(disk);
  const std::string page(1000, 'p');
  EXPECT_EQ(replace(disk, {.call = 1, .onward = true, .trouble = Trouble::takesHalf}, page), std::nullopt);
  expectReplaced(disk, page);
  const std::vector<std::string> made = calls();
  EXPECT_EQ(std::count(made.begin(), made.end(), "write"), 10) << "halves of a thousand";
}

TEST_P(ReplaceFaults, AWriteThatASignalInterruptsIsMadeAgain) {
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    const auto failure = replace(disk, {.call = call, .trouble = Trouble::fails, .error = EINTR});
    if (!reached(call) || callNames[indexOf(call)] == std::string("write") || isHarmless(callNames[indexOf(call)])) {
      EXPECT_EQ(failure, std::nullopt);
      expectReplaced(disk);
    } else {
      EXPECT_EQ(failure, "Interrupted system call");
      expectAsBefore(disk);
    }
    return reached(call);
  });
}

TEST_P(ReplaceFaults, WritingATableIsCriticalOrDone) {
  FakeHost reader;
  ItemTable table = tableOf(reader, "staff 1 at 0 instrument 3\nnote 1 at 9\n");
  const std::string encoded = encodePage(reader, "", table);
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    QuietSystem host;
    const auto end = endOf([&] {
      const std::string name = disk.core("a.mus");
      const Under trouble({.call = call, .trouble = Trouble::fails, .error = ENOSPC});
      writeFile(host, name, table);
    });
    if (!reached(call) || isHarmless(callNames[indexOf(call)])) {
      EXPECT_EQ(end, std::nullopt);
      EXPECT_EQ(host.messages, std::vector<Message>{});
      expectReplaced(disk, encoded);
    } else {
      EXPECT_EQ(end, 1);
      EXPECT_EQ(host.messages, std::vector{critical("Open of output MUS file failed. Hit OK to terminate.")});
      expectAsBefore(disk);
    }
    return reached(call);
  });
}

/// The same in a process of its own, which the trouble kills. Returns false when it came to its end.
bool isKilled(const std::function<void()>& run) {
  const pid_t child = ::fork();
  if (child == 0) {
    run();
    ::_exit(0);
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) || status == 0);
  return WIFSIGNALED(status);
}

TEST_P(ReplaceFaults, AKilledProcessLeavesTheOldOrTheNewPageWhole) {
  {
    const TemporaryFolder disk;
    prepare(disk);
    EXPECT_EQ(replace(disk, {}), std::nullopt);
  }
  const std::vector<std::string> made = calls();
  const int all = static_cast<int>(made.size());
  const int renaming = callOf("rename");
  for (const Trouble trouble : {Trouble::killsBefore, Trouble::killsAfter, Trouble::killsHalfway}) {
    atEveryCall([&](int call, const TemporaryFolder& disk) {
      const bool killed = isKilled([&] { static_cast<void>(replace(disk, {.call = call, .trouble = trouble})); });
      EXPECT_EQ(killed, call <= all && (trouble != Trouble::killsHalfway || made.at(indexOf(call)) == "write"));
      const bool replaced = !killed || call > renaming || (call == renaming && trouble == Trouble::killsAfter);
      EXPECT_EQ(disk.file("a.mus"), replaced ? newPage : before());
      Names left = disk.entries();
      left.erase("a.mus");
      EXPECT_LE(left.size(), replaced ? 0U : 1U);
      EXPECT_TRUE(std::all_of(left.begin(), left.end(), isStray));

      EXPECT_EQ(replace(disk, {}, "the page of a later run"), std::nullopt);
      EXPECT_EQ(disk.file("a.mus"), "the page of a later run");
      left.insert("a.mus");
      EXPECT_EQ(disk.entries(), left) << "a later run leaves nothing more";
      return call <= all;
    });
  }
}

}  // namespace
}  // namespace kiv::test
