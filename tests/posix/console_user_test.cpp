#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/posix/console_output.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

TEST(ConsoleUser, MessagesShowTheirSeverity) {
  EXPECT_EQ(throughAPipe([](ConsoleUser& user) {
              user.show(message(Icon::critical, "Cannot continue."));
              user.show(message(Icon::exclamation, "Go on?", Buttons::yesNo));
              user.show(message(Icon::information, "Mind this."));
              user.show(message(Icon::none, "By the way."));
            }),
            "critical: Cannot continue.\nexclamation: Go on?\ninformation: Mind this.\nnote: By the way.\n");
}

TEST(ConsoleUser, FurtherLinesOfAMessageAreIndented) {
  EXPECT_EQ(throughAPipe([](ConsoleUser& user) { inform(user, "one\r\ntwo\r\n\r\nthree"); }),
            "information: one\n  two\n  \n  three\n");
}

TEST(ConsoleUser, MessagesKeepTheirText) {
  EXPECT_EQ(throughAPipe([](ConsoleUser& user) { inform(user, "ä ß %s \\n"); }), "information: ä ß %s \\n\n");
}

TEST(ConsoleUser, MessagesAreKeptInTheirOrder) {
  throughAPipe([](ConsoleUser& user) {
    EXPECT_TRUE(user.messages().empty());
    inform(user, "one\r\ntwo");
    user.show(message(Icon::exclamation, "Go on?", Buttons::yesNo));
    const std::vector<ShownMessage> expected = {{message(Icon::information, "one\r\ntwo"), Answer::ok},
                                                {message(Icon::exclamation, "Go on?", Buttons::yesNo), Answer::no}};
    EXPECT_EQ(user.messages(), expected);
  });
}

TEST(ConsoleUser, QuestionsAreAnsweredNo) {
  throughAPipe([](ConsoleUser& user) {
    EXPECT_EQ(user.show(message(Icon::exclamation, "Go on?", Buttons::yesNo)), Answer::no);
    EXPECT_EQ(user.show(message(Icon::information, "Mind this.")), Answer::ok);
  });
}

TEST(ConsoleUser, ACriticalMessageThatEndsTheProgramIsShownAndKept) {
  const std::string shown = throughAPipe([](ConsoleUser& user) {
    const Message critical = message(Icon::critical, "Cannot continue.");
    EXPECT_EQ(exitCodeOf(user, [&] { endProgram(critical); }), 1);
    EXPECT_EQ(user.messages(), (std::vector<ShownMessage>{{critical, Answer::ok}}));
  });
  EXPECT_EQ(shown, "critical: Cannot continue.\n");
}

TEST(ConsoleUser, WithoutATerminalProgressAndTextsAreNotShown) {
  const TemporaryFolder disk;
  disk.addFile("names.txt", "* none\r\n");
  EXPECT_EQ(throughAPipe([&](ConsoleUser& user) {
              user.showProgress(3, 10, "pages");
              EXPECT_TRUE(user.showText(disk.core("names.txt")));
              user.showProgress(10, 10, "pages");
              user.setPointer(Pointer::hourglass);
              user.processEvents();
            }),
            "");
}

/// Work that has taken long enough to show its progress: 3 of 10 pages.
void workLong(ConsoleUser& user) {
  user.showProgress(0, 10, "pages");
  std::this_thread::sleep_for(std::chrono::milliseconds(550));
  user.showProgress(3, 10, "pages");
}

const std::string longWork = "[######..............] 3 of 10 pages, ";

TEST(ConsoleUser, ATerminalShowsTheProgressOfLongWork) {
  const std::string shown = onATerminal(workLong);
  EXPECT_TRUE(shown.starts_with(longWork)) << shown;
  EXPECT_TRUE(shown.ends_with(" s left")) << shown;
}

TEST(ConsoleUser, ShortWorkShowsNoProgress) {
  EXPECT_EQ(onATerminal([](ConsoleUser& user) {
              user.showProgress(0, 2, "pages");
              user.showProgress(1, 2, "pages");
              user.showProgress(2, 2, "pages");
            }),
            "");
}

TEST(ConsoleUser, HiddenProgressIsNotShown) {
  EXPECT_EQ(onATerminal([](ConsoleUser& user) {
              user.hideProgress();
              workLong(user);
              EXPECT_EQ(user.reached(), "3 of 10 pages");
            }),
            "");
}

TEST(ConsoleUser, TheEndOfTheWorkTakesItsProgressAway) {
  const std::string shown = onATerminal([](ConsoleUser& user) {
    workLong(user);
    user.showProgress(10, 10, "pages");
  });
  EXPECT_TRUE(shown.ends_with(" s left\r\x1B[K")) << shown;
}

TEST(ConsoleUser, ProgressIsClearedBeforeAMessage) {
  const std::string shown = onATerminal([](ConsoleUser& user) {
    workLong(user);
    inform(user, "Mind this.");
    inform(user, "And this.");
  });
  EXPECT_TRUE(shown.starts_with(longWork)) << shown;
  EXPECT_TRUE(shown.ends_with(" s left\r\x1B[Kinformation: Mind this.\ninformation: And this.\n")) << shown;
}

TEST(ConsoleUser, ProgressOfNothingShowsNothing) {
  EXPECT_EQ(onATerminal([](ConsoleUser& user) { user.showProgress(0, 0, "pages"); }), "");
}

TEST(ConsoleUser, ATerminalShowsTexts) {
  const TemporaryFolder disk;
  disk.addFile("names.txt", "* none\r\n");
  const std::string shown = onATerminal([&](ConsoleUser& user) {
    workLong(user);
    EXPECT_TRUE(user.showText(disk.core("NAMES.TXT")));
  });
  EXPECT_TRUE(shown.ends_with(" s left\r\x1B[K* none\r\n")) << shown;
}

TEST(ConsoleUser, ATextThatIsNotThereShowsNothing) {
  EXPECT_EQ(onATerminal([](ConsoleUser& user) {
              EXPECT_TRUE(user.showText("\\no\\such\\names.txt"));
              EXPECT_TRUE(user.messages().empty());
            }),
            "");
}

TEST(ConsoleHost, FilesThatWereReplacedAreRecordedInTheirOrder) {
  const TemporaryFolder disk;
  ConsoleHost host;
  Files& files = host.host().files;
  EXPECT_EQ(files.replaceFile(disk.core("b.mus"), "page"), std::nullopt);
  EXPECT_NE(files.replaceFile(disk.core("missing\\c.mus"), "page"), std::nullopt);
  EXPECT_EQ(files.replaceFile(disk.core("a.mus"), "page"), std::nullopt);
  EXPECT_EQ(host.replacedFiles(), (std::vector{disk.core("b.mus"), disk.core("a.mus")}));
}

}  // namespace
}  // namespace kiv::test
