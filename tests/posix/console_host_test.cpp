#include "platform/console/console_host.h"

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "platform/posix/posix_files.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

/// While it lives, standard error is another file.
class StandardErrorTo {
 public:
  explicit StandardErrorTo(const Descriptor& file) : before_(::dup(STDERR_FILENO)) {
    std::fflush(stderr);
    ::dup2(file.number(), STDERR_FILENO);
  }
  StandardErrorTo(const StandardErrorTo&) = delete;
  StandardErrorTo& operator=(const StandardErrorTo&) = delete;
  ~StandardErrorTo() {
    std::fflush(stderr);
    ::dup2(before_.number(), STDERR_FILENO);
  }

 private:
  Descriptor before_;
};

std::string whatComesFrom(const Descriptor& file) {
  constexpr int patience = 10'000;  // milliseconds
  pollfd arrival{file.number(), POLLIN, 0};
  if (::poll(&arrival, 1, patience) <= 0) {
    return "";
  }
  std::array<char, 4096> room{};
  const ssize_t got = ::read(file.number(), room.data(), room.size());
  return {room.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

/// What a console host writes to a standard error that is a pipe.
template <typename Use>
std::string throughAPipe(Use use) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) {
    throw std::runtime_error("no pipe");
  }
  const Descriptor out(ends[0]);
  {
    const Descriptor in(ends[1]);
    const StandardErrorTo redirected(in);
    ConsoleHost host;
    use(host);
  }
  return whatComesFrom(out);
}

/// What a console host writes to a standard error that is a terminal.
template <typename Use>
std::string onATerminal(Use use) {
  constexpr char endOfText = '\x04';
  int keeper = -1;
  int user = -1;
  if (::openpty(&keeper, &user, nullptr, nullptr, nullptr) != 0) {
    throw std::runtime_error("no terminal");
  }
  const Descriptor out(keeper);
  const Descriptor in(user);
  termios plain{};
  ::tcgetattr(user, &plain);
  ::cfmakeraw(&plain);
  ::tcsetattr(user, TCSANOW, &plain);
  {
    const StandardErrorTo redirected(in);
    ConsoleHost host;
    use(host);
    host.writeError(std::string(1, endOfText));
  }
  std::string text;
  while (text.find(endOfText) == std::string::npos) {
    const std::string more = whatComesFrom(out);  // a terminal gives what has come so far
    if (more.empty()) {
      throw std::runtime_error("the terminal is silent");
    }
    text += more;
  }
  return text.substr(0, text.find(endOfText));
}

TEST(ConsoleHost, MessagesTellTheirSeverity) {
  EXPECT_EQ(throughAPipe([](ConsoleHost& host) {
              host.message(Icon::critical, "No way on.", Buttons::ok);
              host.message(Icon::exclamation, "Go on?", Buttons::yesNo);
              host.message(Icon::information, "Mind this.", Buttons::ok);
              host.message(Icon::none, "By the way.", Buttons::ok);
            }),
            "critical: No way on.\nexclamation: Go on?\ninformation: Mind this.\nnote: By the way.\n");
}

TEST(ConsoleHost, FurtherLinesOfAMessageAreIndented) {
  EXPECT_EQ(throughAPipe([](ConsoleHost& host) { host.inform("one\r\ntwo\r\n\r\nthree"); }),
            "information: one\n  two\n  \n  three\n");
}

TEST(ConsoleHost, MessagesKeepTheirBytes) {
  EXPECT_EQ(throughAPipe([](ConsoleHost& host) { host.inform("ä\xE4 %s"); }), "information: ä\xE4 %s\n");
}

TEST(ConsoleHost, MessagesAreKeptInTheirOrder) {
  throughAPipe([](ConsoleHost& host) {
    EXPECT_TRUE(host.messages().empty());
    host.inform("one\r\ntwo");
    host.message(Icon::exclamation, "Go on?", Buttons::yesNo);
    const std::vector<ShownMessage> expected = {{Icon::information, "one\r\ntwo", Answer::ok},
                                                {Icon::exclamation, "Go on?", Answer::no}};
    EXPECT_EQ(host.messages(), expected);
  });
}

TEST(ConsoleHost, QuestionsAreAnsweredNo) {
  throughAPipe([](ConsoleHost& host) {
    EXPECT_EQ(host.message(Icon::exclamation, "Go on?", Buttons::yesNo), Answer::no);
    EXPECT_EQ(host.message(Icon::information, "Mind this.", Buttons::ok), Answer::ok);
  });
}

TEST(ConsoleHost, FatalIsKeptAndEndsTheProgram) {
  const std::string shown = throughAPipe([](ConsoleHost& host) {
    try {
      host.fatal("No way on.");
      ADD_FAILURE() << "the program went on";
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.exitCode, 1);
    }
    EXPECT_EQ(host.messages(), (std::vector<ShownMessage>{{Icon::critical, "No way on.", Answer::ok}}));
  });
  EXPECT_EQ(shown, "critical: No way on.\n");
}

TEST(ConsoleHost, WithoutATerminalItIsSilentAboutProgressAndTexts) {
  const TemporaryFolder disk;
  disk.addFile("names.txt", "* none\r\n");
  EXPECT_EQ(throughAPipe([&](ConsoleHost& host) {
              host.showProgress(3, 10, "pages");
              EXPECT_TRUE(host.showText(disk.core("names.txt")));
              host.showProgress(10, 10, "pages");
              host.setPointer(Pointer::hourglass);
              host.processEvents();
            }),
            "");
}

TEST(ConsoleHost, ATerminalShowsProgress) {
  EXPECT_EQ(onATerminal([](ConsoleHost& host) { host.showProgress(3, 10, "pages"); }), "3 of 10 pages");
}

TEST(ConsoleHost, ProgressReplacesTheProgressBeforeIt) {
  EXPECT_EQ(onATerminal([](ConsoleHost& host) {
              host.showProgress(0, 2, "pages");
              host.showProgress(1, 2, "pages");
              host.showProgress(2, 2, "pages");
            }),
            "0 of 2 pages\r\x1B[K1 of 2 pages\r\x1B[K");
}

TEST(ConsoleHost, ProgressIsClearedBeforeAMessage) {
  EXPECT_EQ(onATerminal([](ConsoleHost& host) {
              host.showProgress(3, 10, "pages");
              host.inform("Mind this.");
              host.inform("And this.");
            }),
            "3 of 10 pages\r\x1B[Kinformation: Mind this.\ninformation: And this.\n");
}

TEST(ConsoleHost, ProgressOfNothingShowsNothing) {
  EXPECT_EQ(onATerminal([](ConsoleHost& host) { host.showProgress(0, 0, "pages"); }), "");
}

TEST(ConsoleHost, ATerminalShowsTexts) {
  const TemporaryFolder disk;
  disk.addFile("names.txt", "* none\r\n");
  EXPECT_EQ(onATerminal([&](ConsoleHost& host) {
              host.showProgress(3, 10, "pages");
              EXPECT_TRUE(host.showText(disk.core("NAMES.TXT")));
            }),
            "3 of 10 pages\r\x1B[K* none\r\n");
}

TEST(ConsoleHost, ATextThatIsNotThereShowsNothing) {
  EXPECT_EQ(onATerminal([](ConsoleHost& host) {
              EXPECT_TRUE(host.showText("\\no\\such\\names.txt"));
              EXPECT_TRUE(host.messages().empty());
            }),
            "");
}

}  // namespace
}  // namespace kiv::test
