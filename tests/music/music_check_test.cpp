#include "music/music_check.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "music/music_warnings.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Playing = std::vector<std::set<std::int16_t>>;

const std::string four = "timesignature 2 at 17 upper 4 lower 4\n";

/// A page of 101 above 102, with a bar of 101 that lasts so long.
std::string both(const std::string& signs, const std::string& duration = "4") {
  return "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\n" + signs + "note 2 at 30 duration " + duration +
         "\nbarline 2 at 60 spans 1\nstaff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nnote 1 at 30 duration " +
         duration + "\nbarline 1 at 0 spans 2\nbarline 1 at 60 spans 1\n";
}

/// A page of 101 alone, with a bar that lasts so long.
std::string alone(const std::string& duration) {
  return "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nbarline 1 at 0 spans 1\nnote 1 at 30 duration " +
         duration + "\nbarline 1 at 60 spans 1\n";
}

/// The results of pages, as MusicCheck is given them.
class MusicCheckTest : public ::testing::Test {
 protected:
  void convert(const std::vector<std::string>& texts, Playing playing,
               RestStaves restStaves = RestStaves::asKnownSoFar) {
    std::map<std::string, std::string> pages;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      pages["P" + std::to_string(i + 1) + ".MUS"] = page(texts[i]);
    }
    group_.emplace(pages, false, restStaves);
    ASSERT_TRUE(group_->converted());
    playing_ = std::move(playing);
  }
  /// Adds the bytes of a result, counted from 1, and takes its file away.
  void addAndDelete(int system) {
    const auto music = musicOfPage(group_->result(system), playing_[static_cast<std::size_t>(system - 1)]);
    ASSERT_TRUE(music);
    check.add(*music);
    group_->host.deleteFile(ConvertedGroup::resultName(system));
  }
  CheckedResult resultAt(std::size_t index) const {
    return {ConvertedGroup::resultName(static_cast<int>(index) + 1), playing_[index]};
  }
  std::vector<MusicFault> faults(bool areAll = true) {
    return check.finish(group_->host, {playing_.size(), [this](std::size_t index) { return resultAt(index); }, areAll});
  }
  /// "late-entry-unknown 1" for one of the first system.
  static std::vector<std::string> inWords(const std::vector<MusicFault>& faults) {
    std::vector<std::string> words;
    for (const MusicFault& fault : faults) {
      words.push_back(std::string(fault.warning.code) + " " + std::to_string(fault.result + 1));
    }
    return words;
  }
  std::vector<kiv::Message> warningsOfFiles() {
    std::vector<CheckedResult> results;
    for (std::size_t i = 0; i < playing_.size(); ++i) {
      results.push_back(resultAt(i));
    }
    return findMusicWarnings(group_->host, results);
  }

  MusicCheck check{FaultPlaces::no};

 private:
  std::optional<ConvertedGroup> group_;
  Playing playing_;
};

TEST_F(MusicCheckTest, SaysTheSameOfResultsThatItWasGivenAsOfTheirFiles) {
  convert({both(four), alone("3"), both(""), alone("2")}, {{101, 102}, {101}, {101, 102}, {101}});
  const std::vector<kiv::Message> expected = warningsOfFiles();
  EXPECT_EQ(expected.size(), 2U);
  for (const int system : {1, 2, 3, 4}) {
    addAndDelete(system);
  }
  EXPECT_EQ(warningsOf(faults()), expected);
}

TEST_F(MusicCheckTest, ReadsTheResultsThatItWasNotGiven) {
  convert({both(four), alone("3"), alone("2")}, {{101, 102}, {101}, {101}});
  const std::vector<kiv::Message> expected = warningsOfFiles();
  addAndDelete(1);
  addAndDelete(2);
  EXPECT_EQ(warningsOf(faults()), expected);
  EXPECT_EQ(check.count(), 3U);
}

TEST_F(MusicCheckTest, NamesTheFirstResultThatItWasNotGivenAndCannotRead) {
  convert({both(four), alone("3"), alone("2")}, {{101, 102}, {101}, {101}});
  addAndDelete(1);
  EXPECT_EQ(inWords(faults()).size(), 2U) << "the two others can be read";
  addAndDelete(2);
  check = MusicCheck(FaultPlaces::no);
  EXPECT_THAT(inWords(faults()), ElementsAre("results-not-checked 1"));
}

TEST_F(MusicCheckTest, ALaterSystemShowsThatARestStaffBeforeItIsWrong) {
  const std::string oneLine =
      "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 1 instrument 102\nclef 1 at 2\nnote 1 at 30 duration 4\nbarline 1 at 0 spans 2\n"
      "barline 1 at 60 spans 1\n";
  convert({alone("4") + "timesignature 1 at 17 upper 4 lower 4\n", alone("4"), oneLine}, {{101}, {101}, {101, 102}});
  addAndDelete(1);
  addAndDelete(2);
  addAndDelete(3);
  EXPECT_THAT(inWords(faults()), ElementsAre("late-entry-unknown 1", "late-entry-unknown 2"));
}

TEST_F(MusicCheckTest, TheFirstTimeSignatureCountsForTheSystemsBeforeIt) {
  const std::string disagreeing =
      "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 3\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nnote 1 at 30 duration 4\nbarline 1 at 0 spans 2\n"
      "barline 1 at 60 spans 1\n";
  const std::string three =
      "staff 3 at 0 size 1 lines 5 instrument 101\nclef 3 at 2\ntimesignature 3 at 17 upper 3 lower 4\n"
      "note 3 at 30 duration 3\nbarline 3 at 60 spans 1\nstaff 2 at 0 size 1 lines 5 instrument 102\nclef 2 at 2\n"
      "note 2 at 30 duration 3\nbarline 2 at 60 spans 1\nstaff 1 at 0 size 1 lines 5 instrument 103\nclef 1 at 2\n"
      "note 1 at 30 duration 3\nbarline 1 at 0 spans 3\nbarline 1 at 60 spans 1\n";
  convert({disagreeing, three}, {{101, 102}, {101, 102, 103}}, RestStaves::fitting);
  addAndDelete(1);
  addAndDelete(2);
  const auto found = warningsOf(faults());
  ASSERT_FALSE(found.empty());
  EXPECT_THAT(found.front().text, ::testing::EndsWith("rest staves should last 3 quarters"));
}

TEST_F(MusicCheckTest, ATimeSignatureIsMissingOnlyIfAllResultsWereSeen) {
  convert({both(""), alone("4")}, {{101, 102}, {101}}, RestStaves::fitting);
  EXPECT_THAT(inWords(faults()), ElementsAre("no-time-signature 2"));
  check = MusicCheck(FaultPlaces::no);
  EXPECT_THAT(inWords(faults(false)), IsEmpty());
}

TEST_F(MusicCheckTest, KnowsPlacesOnRequest) {
  convert({both(four), alone("3")}, {{101, 102}, {101}});
  check = MusicCheck(FaultPlaces::yes);
  const auto found = faults();
  ASSERT_EQ(inWords(found), std::vector<std::string>{"bar-rest-length 2"});
  ASSERT_EQ(found.front().places.size(), 1U);
  EXPECT_EQ(found.front().places.front().staff, 1);
  EXPECT_EQ(found.front().places.front().bar, (std::pair<float, float>(0, 60)));
}

}  // namespace
}  // namespace kiv::test
