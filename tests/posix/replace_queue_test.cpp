#include <new>
#include <string>
#include <thread>
#include <vector>

#include "tests/posix/scripted_files.h"

namespace kiv::test {
namespace {

TEST_F(ReplaceQueues, FilesAreEnteredAndPlacedOneAfterTheOther) {
  std::vector<std::string> expected;
  for (int number = 1; number <= 200; ++number) {
    if (queue.isFull()) {
      EXPECT_EQ(queue.waitForFirst(), std::nullopt);
    }
    add(number);
    expected.push_back("enter " + std::to_string(number));
    expected.push_back("place " + std::to_string(number));
  }
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(inTurn(), expected);
  EXPECT_EQ(script.prepared, 0);
}

TEST_F(ReplaceQueues, SeveralArePreparedWhileTheFirstOneIs) {
  script.at = [this](const std::string& step) -> Failure {
    if (step == "prepare 1") {
      script.waitFor("prepare 2");
      script.waitFor("prepare 3");
    }
    return std::nullopt;
  };
  add(1, 3);
  EXPECT_FALSE(queue.isFull());
  add(4);
  EXPECT_TRUE(queue.isFull());
  EXPECT_EQ(finish(), "");
  EXPECT_GE(script.mostPrepared, 3);
  EXPECT_FALSE(queue.isFull());
}

TEST_F(ReplaceQueues, NoneIsPreparedBeforeTheFirstOneIsEntered) {
  script.at = [](const std::string& step) -> Failure {
    if (step == "enter 1" || step == "enter 5") {
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
    }
    return std::nullopt;
  };
  for (const int first : {1, 5}) {
    script.done.clear();
    add(first, first + 3);
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(script.done.front(), "enter " + std::to_string(first));
  }
}

TEST_F(ReplaceQueues, AFailureAtAnyStepLeavesNothingOfLaterFiles) {
  for (const std::string failing : {"enter 2", "prepare 2", "place 2", "enter 1", "prepare 1", "place 1"}) {
    script.done.clear();
    script.at = [&](const std::string& step) -> Failure {
      if (step == failing && script.has("enter 1")) {
        script.waitFor("prepare 3");
      }
      return step == failing ? Failure(step) : std::nullopt;
    };
    add(1, 4);
    EXPECT_EQ(finish(), failing);
    files.clear();
    const std::vector<std::string> steps = inTurn();
    const auto isLater = [&](const std::string& step) {
      return step.ends_with("3") || step.ends_with("4") || (failing.ends_with("1") && step.ends_with("2"));
    };
    EXPECT_TRUE(std::none_of(steps.begin(), steps.end(), isLater)) << failing;
    EXPECT_EQ(script.prepared, 0) << failing;
  }
  script.at = [](const std::string&) { return std::nullopt; };
  add(7);
  EXPECT_EQ(finish(), "") << "the queue goes on";
  EXPECT_TRUE(script.has("place 7"));
}

TEST_F(ReplaceQueues, TheFirstFailureInTheOrderOfTheFilesIsReported) {
  script.at = [this](const std::string& step) -> Failure {
    if (step == "place 1") {
      script.waitFor("prepare 3 fails");
    }
    return step == "prepare 3" || step == "place 2" ? Failure(step) : std::nullopt;
  };
  add(1, 4);
  EXPECT_EQ(queue.waitForFirst(), std::nullopt);
  EXPECT_EQ(queue.waitForFirst(), "place 2");
  EXPECT_TRUE(queue.isEmpty());
}

TEST_F(ReplaceQueues, AFileThatHasNoSpaceBesideOthersIsPreparedAlone) {
  script.space = 1;
  script.at = [this](const std::string& step) -> Failure {
    if (step == "prepare 1" && !script.has("prepare 1 fails")) {
      script.waitForAPreparedFile();
    }
    return std::nullopt;
  };
  add(1, 4);
  EXPECT_EQ(finish(), "");
  EXPECT_TRUE(script.has("prepare 1 fails"));
  EXPECT_EQ(inTurn(), (std::vector<std::string>{"enter 1", "place 1", "enter 2", "place 2", "enter 3", "place 3",
                                                "enter 4", "place 4"}));
  EXPECT_EQ(script.mostPrepared, 1);
}

TEST_F(ReplaceQueues, OthersArePreparedAgainWhileAFileThatWasPreparedAloneIsPlaced) {
  script.at = [this](const std::string& step) -> Failure {
    if (step == "prepare 1" && !script.has("prepare 1 fails")) {
      script.waitFor("prepare 2");
      script.waitFor("prepare 3");
      return "busy";
    }
    if (step == "place 1") {
      script.waitFor("prepare 2", 2);
    }
    return std::nullopt;
  };
  add(1, 4);
  EXPECT_EQ(finish(), "");
}

TEST_F(ReplaceQueues, AFileThatFailsAloneIsNotTriedAgain) {
  script.at = [](const std::string& step) -> Failure {
    return step == "prepare 1" ? Failure("no space") : std::nullopt;
  };
  add(1);
  EXPECT_EQ(finish(), "no space");
  EXPECT_EQ(script.done, (std::vector<std::string>{"enter 1", "prepare 1 fails"}));
}

TEST_F(ReplaceQueues, WhatAStepThrowsIsThrownInItsTurn) {
  for (const std::string failing : {"enter 2", "prepare 2", "place 2"}) {
    script.done.clear();
    script.at = [&](const std::string& step) -> Failure {
      if (step == failing) {
        throw std::bad_alloc();
      }
      return std::nullopt;
    };
    add(1, 4);
    EXPECT_EQ(queue.waitForFirst(), std::nullopt);
    EXPECT_THROW(static_cast<void>(queue.waitForFirst()), std::bad_alloc) << failing;
    EXPECT_TRUE(queue.isEmpty());
    files.clear();
    EXPECT_EQ(script.prepared, 0) << failing;
    EXPECT_FALSE(script.has("enter 3")) << failing;
  }
}

TEST_F(ReplaceQueues, AFailureIsReportedWhenNoOtherFileIsPreparedAnyMore) {
  script.at = [this](const std::string& step) -> Failure {
    if (step == "prepare 2") {
      script.waitFor("place 1 fails");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    return step == "place 1" ? Failure(step) : std::nullopt;
  };
  add(1, 2);
  EXPECT_EQ(queue.waitForFirst(), "place 1");
  EXPECT_TRUE(script.has("prepare 2")) << "it may be deleted now";
}

TEST_F(ReplaceQueues, IsFirstDoneDoesNotWait) {
  script.at = [](const std::string& step) -> Failure {
    if (step == "place 1") {
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
    }
    return std::nullopt;
  };
  add(1);
  EXPECT_FALSE(queue.isFirstDone());
  script.waitFor("place 1");
  EXPECT_EQ(finish(), "");
}

TEST(AbandonedReplaceQueue, FinishesItsFiles) {
  Script script;
  std::vector<std::unique_ptr<ScriptedFile>> files;
  {
    ReplaceQueue queue;
    for (int number = 1; number <= 4; ++number) {
      files.push_back(std::make_unique<ScriptedFile>(script, number));
      queue.add(*files.back());
    }
  }
  EXPECT_TRUE(script.has("place 4"));
}

TEST(AbandonedReplaceQueue, PlacesNothingAfterAFailure) {
  Script script;
  script.at = [](const std::string& step) -> Failure { return step == "place 2" ? Failure("no") : std::nullopt; };
  std::vector<std::unique_ptr<ScriptedFile>> files;
  {
    ReplaceQueue queue;
    for (int number = 1; number <= 4; ++number) {
      files.push_back(std::make_unique<ScriptedFile>(script, number));
      queue.add(*files.back());
    }
  }
  EXPECT_FALSE(script.has("enter 3"));
}

}  // namespace
}  // namespace kiv::test
