#include "platform/console/console_host.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <stdio_ext.h>
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

// --- questions ---

/// While it lives, standard input is another file.
class StandardInputFrom {
 public:
  explicit StandardInputFrom(const Descriptor& file) : before_(::dup(STDIN_FILENO)) { readFrom(file); }
  StandardInputFrom(const StandardInputFrom&) = delete;
  StandardInputFrom& operator=(const StandardInputFrom&) = delete;
  ~StandardInputFrom() { readFrom(before_); }

 private:
  /// What was read ahead from the file before, and that it had ended, is forgotten.
  static void readFrom(const Descriptor& file) {
    ::dup2(file.number(), STDIN_FILENO);
    ::__fpurge(stdin);
    std::clearerr(stdin);
    std::cin.clear();
  }

  Descriptor before_;
};

/// A terminal and somebody at it, who types ahead and then ends the input.
class Terminal {
 public:
  explicit Terminal(const std::string& typed) : Terminal(opened()) {
    if (writeAll(keeper_, typed + endOfInput)) {
      throw std::runtime_error("the terminal takes no input");
    }
  }

  const Descriptor& line() const { return line_; }

  /// All that was written to it so far.
  std::string shown() const {
    writeAll(line_, std::string(1, endOfInput));
    std::string text;
    while (!text.ends_with(endOfInput)) {
      const std::string more = whatComesFrom(keeper_);
      if (more.empty()) {
        throw std::runtime_error("the terminal is silent");
      }
      text += more;
    }
    text.pop_back();
    return text;
  }

 private:
  static constexpr char endOfInput = '\x04';

  struct Ends {
    int keeper = -1;
    int line = -1;
  };

  explicit Terminal(Ends ends) : keeper_(ends.keeper), line_(ends.line) {
    termios settings{};
    ::tcgetattr(ends.line, &settings);
    settings.c_iflag &= ~static_cast<tcflag_t>(ICRNL);
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    ::tcsetattr(ends.line, TCSANOW, &settings);
  }

  static Ends opened() {
    Ends ends;
    if (::openpty(&ends.keeper, &ends.line, nullptr, nullptr, nullptr) != 0) {
      throw std::runtime_error("no terminal");
    }
    return ends;
  }

  Descriptor keeper_;
  Descriptor line_;
};

const std::string question = "exclamation: Go on?\n";
const std::string prompt = "  [y/N] ";

Answer goOn(ConsoleHost& host) {
  return host.message(Icon::exclamation, "Go on?", Buttons::yesNo);
}

struct Asked {
  Answer answer = Answer::ok;
  std::string shown;
};

/// Puts one question to somebody at a terminal.
Asked askedOnATerminal(const std::string& typed) {
  const Terminal terminal(typed);
  Asked asked;
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    asked.answer = goOn(host);
    EXPECT_EQ(host.messages(), (std::vector<ShownMessage>{{Icon::exclamation, "Go on?", asked.answer}}));
  }
  asked.shown = terminal.shown();
  return asked;
}

TEST(ConsoleQuestion, YesIsTypedInOneLetterOrThreeSmallOrCapital) {
  for (const std::string typed : {"y", "Y", "yes", "YES", "Yes", "yEs", " y", "y ", "\ty\t", "y\r"}) {
    const Asked asked = askedOnATerminal(typed + "\n");
    EXPECT_EQ(asked.answer, Answer::yes) << "[" << typed << "]";
    EXPECT_EQ(asked.shown, question + prompt) << "[" << typed << "]";
  }
}

TEST(ConsoleQuestion, NoIsTypedTheSameWay) {
  for (const std::string typed : {"n", "N", "no", "NO", "No", " no "}) {
    const Asked asked = askedOnATerminal(typed + "\ny\n");
    EXPECT_EQ(asked.answer, Answer::no) << "[" << typed << "]";
    EXPECT_EQ(asked.shown, question + prompt) << "[" << typed << "]";
  }
}

TEST(ConsoleQuestion, AnEmptyLineIsNo) {
  for (const std::string typed : {"", " ", "\t "}) {
    const Asked asked = askedOnATerminal(typed + "\ny\n");
    EXPECT_EQ(asked.answer, Answer::no) << "[" << typed << "]";
    EXPECT_EQ(asked.shown, question + prompt) << "[" << typed << "]";
  }
}

TEST(ConsoleQuestion, AnythingElseIsAskedAgain) {
  for (const std::string typed : {"j", "ye", "yess", "yy", "1", "true", "nope", "yes no", "\xC3\xBF", "[", "@"}) {
    const Asked asked = askedOnATerminal(typed + "\ny\n");
    EXPECT_EQ(asked.answer, Answer::yes) << "[" << typed << "]";
    EXPECT_EQ(asked.shown, question + prompt + prompt) << "[" << typed << "]";
  }
}

TEST(ConsoleQuestion, ItIsAskedUntilThereIsAnAnswer) {
  const Asked asked = askedOnATerminal("what?\nwhy?\nhm\nno\nyes\n");
  EXPECT_EQ(asked.answer, Answer::no);
  EXPECT_EQ(asked.shown, question + prompt + prompt + prompt + prompt);
}

TEST(ConsoleQuestion, TheEndOfInputIsNo) {
  const Asked atOnce = askedOnATerminal("");
  EXPECT_EQ(atOnce.answer, Answer::no);
  EXPECT_EQ(atOnce.shown, question + prompt);
  const Asked afterNonsense = askedOnATerminal("what?\n");
  EXPECT_EQ(afterNonsense.answer, Answer::no);
  EXPECT_EQ(afterNonsense.shown, question + prompt + prompt);
}

TEST(ConsoleQuestion, EveryQuestionHasItsOwnAnswer) {
  const Terminal terminal("y\nn\n\nyes\n");
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    EXPECT_EQ(goOn(host), Answer::yes);
    EXPECT_EQ(goOn(host), Answer::no);
    host.inform("Mind this.");
    EXPECT_EQ(goOn(host), Answer::no);
    EXPECT_EQ(goOn(host), Answer::yes);
    EXPECT_EQ(goOn(host), Answer::no);
    EXPECT_EQ(goOn(host), Answer::no) << "the input has ended for good";
  }
  EXPECT_EQ(terminal.shown(), question + prompt + question + prompt + "information: Mind this.\n" + question + prompt +
                                  question + prompt + question + prompt + question + prompt);
}

TEST(ConsoleQuestion, OnlyQuestionsAreWaitedFor) {
  const Terminal terminal("y\n");
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    EXPECT_EQ(host.message(Icon::critical, "No way on.", Buttons::ok), Answer::ok);
    EXPECT_EQ(goOn(host), Answer::yes) << "what was typed is still there";
  }
  EXPECT_EQ(terminal.shown(), "critical: No way on.\n" + question + prompt);
}

TEST(ConsoleQuestion, ProgressIsClearedBeforeAQuestion) {
  const Terminal terminal("y\n");
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    host.showProgress(3, 10, "systems");
    EXPECT_EQ(goOn(host), Answer::yes);
  }
  EXPECT_EQ(terminal.shown(), "3 of 10 systems\r\x1B[K" + question + prompt);
}

TEST(ConsoleQuestion, WhereNobodySeesItTheAnswerIsNo) {
  const Terminal terminal("y\n");
  const StandardInputFrom keyboard(terminal.line());
  EXPECT_EQ(throughAPipe([](ConsoleHost& host) { EXPECT_EQ(goOn(host), Answer::no); }), question);
}

TEST(ConsoleQuestion, WhereNobodyTypesTheAnswerIsNo) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(::pipe(ends), 0);
  const Descriptor out(ends[0]);
  const Descriptor in(ends[1]);
  ASSERT_EQ(writeAll(in, "y\n"), std::nullopt);
  const StandardInputFrom keyboard(out);
  EXPECT_EQ(onATerminal([](ConsoleHost& host) { EXPECT_EQ(goOn(host), Answer::no); }), question);
}

}  // namespace
}  // namespace kiv::test
