#include <chrono>
#include <cstdio>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pty.h>
#include <stdio_ext.h>
#include <termios.h>
#include <unistd.h>

#include "tests/posix/console_output.h"

namespace kiv::test {
namespace {

/// While it lives, standard input is another file.
class StandardInputFrom {
 public:
  explicit StandardInputFrom(const Descriptor& file) : before_(::dup(STDIN_FILENO)) { readFrom(file); }
  StandardInputFrom(const StandardInputFrom&) = delete;
  StandardInputFrom& operator=(const StandardInputFrom&) = delete;
  ~StandardInputFrom() { readFrom(before_); }

 private:
  /// Forgets what was read ahead from the earlier file, and that it had ended.
  static void readFrom(const Descriptor& file) {
    ::dup2(file.number(), STDIN_FILENO);
    ::__fpurge(stdin);
    std::clearerr(stdin);
    std::cin.clear();
  }

  Descriptor before_;
};

/// A terminal and its user, who types ahead and then ends the input.
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
      const std::string more = readAvailable(keeper_);
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
const std::string prompt = "  [y/N/a/q] ";

Answer goOn(ConsoleUser& user) {
  return user.show(message(Icon::exclamation, "Go on?", Buttons::yesNo));
}

struct Asked {
  Answer answer = Answer::ok;
  std::string shown;
};

/// Asks the user of a terminal one question.
Asked askedOnATerminal(const std::string& typed) {
  const Terminal terminal(typed);
  Asked asked;
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    ConsoleUser& user = host.user();
    asked.answer = goOn(user);
    EXPECT_EQ(user.messages(),
              (std::vector<ShownMessage>{{message(Icon::exclamation, "Go on?", Buttons::yesNo), asked.answer}}));
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

TEST(ConsoleQuestion, TheConsoleExplainsTheAnswersOnce) {
  const Terminal terminal("y\nn\n");
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    host.useConsoleWords();
    EXPECT_EQ(goOn(host.user()), Answer::yes);
    EXPECT_EQ(goOn(host.user()), Answer::no);
  }
  const std::string asked = "kivsys: Go on?\n";
  EXPECT_EQ(terminal.shown(), asked + "  [y/N/a/q] (y: yes, n: no, a: yes to all, q: no to all) " + asked + prompt);
}

TEST(ConsoleQuestion, NoIsTypedTheSameWay) {
  for (const std::string typed : {"n", "N", "no", "NO", "No", " no "}) {
    const Asked asked = askedOnATerminal(typed + "\ny\n");
    EXPECT_EQ(asked.answer, Answer::no) << "[" << typed << "]";
    EXPECT_EQ(asked.shown, question + prompt) << "[" << typed << "]";
  }
}

TEST(ConsoleQuestion, OneAnswerCanStandForAll) {
  for (const auto& [typed, answer] :
       {std::pair(std::string("a"), Answer::yes), std::pair(std::string("ALL"), Answer::yes),
        std::pair(std::string("q"), Answer::no), std::pair(std::string("Quit"), Answer::no)}) {
    const Terminal terminal(typed + "\n");
    {
      const StandardInputFrom keyboard(terminal.line());
      const StandardErrorTo screen(terminal.line());
      ConsoleHost host;
      EXPECT_EQ(goOn(host.user()), answer) << typed;
      EXPECT_EQ(goOn(host.user()), answer) << typed;
      EXPECT_EQ(host.messages().size(), 2U);
    }
    EXPECT_EQ(terminal.shown(), question + prompt + question) << typed << " is asked for once";
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
    ConsoleUser& user = host.user();
    EXPECT_EQ(goOn(user), Answer::yes);
    EXPECT_EQ(goOn(user), Answer::no);
    inform(user, "Mind this.");
    EXPECT_EQ(goOn(user), Answer::no);
    EXPECT_EQ(goOn(user), Answer::yes);
    EXPECT_EQ(goOn(user), Answer::no);
    EXPECT_EQ(goOn(user), Answer::no) << "the input has ended for good";
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
    ConsoleUser& user = host.user();
    EXPECT_EQ(user.show(message(Icon::critical, "Cannot continue.")), Answer::ok);
    EXPECT_EQ(goOn(user), Answer::yes) << "what was typed is still there";
  }
  EXPECT_EQ(terminal.shown(), "critical: Cannot continue.\n" + question + prompt);
}

TEST(ConsoleQuestion, ProgressIsClearedBeforeAQuestion) {
  const Terminal terminal("y\n");
  {
    const StandardInputFrom keyboard(terminal.line());
    const StandardErrorTo screen(terminal.line());
    ConsoleHost host;
    ConsoleUser& user = host.user();
    user.showProgress(0, 10, "systems");
    std::this_thread::sleep_for(std::chrono::milliseconds(550));
    user.showProgress(3, 10, "systems");
    EXPECT_EQ(goOn(user), Answer::yes);
  }
  EXPECT_TRUE(terminal.shown().ends_with(" left\r\x1B[K" + question + prompt));
}

TEST(ConsoleQuestion, WithoutATerminalToShowItTheAnswerIsNo) {
  const Terminal terminal("y\n");
  const StandardInputFrom keyboard(terminal.line());
  EXPECT_EQ(throughAPipe([](ConsoleUser& user) { EXPECT_EQ(goOn(user), Answer::no); }), question);
}

TEST(ConsoleQuestion, WithoutATerminalToTypeTheAnswerIsNo) {
  int ends[2] = {-1, -1};
  ASSERT_EQ(::pipe(ends), 0);
  const Descriptor out(ends[0]);
  const Descriptor in(ends[1]);
  ASSERT_EQ(writeAll(in, "y\n"), std::nullopt);
  const StandardInputFrom keyboard(out);
  EXPECT_EQ(onATerminal([](ConsoleUser& user) { EXPECT_EQ(goOn(user), Answer::no); }), question);
}

}  // namespace
}  // namespace kiv::test
