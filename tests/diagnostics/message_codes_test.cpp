#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "messages/analysis_messages.h"
#include "messages/conversion_messages.h"
#include "messages/input_messages.h"
#include "messages/music_warnings.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"
#include "messages/shell_messages.h"
#include "messages/warnings.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::UnorderedElementsAreArray;
using Texts = std::set<std::string>;

// --- a message of every function ---

struct Example {
  std::string function;
  kiv::Message message;
};

std::vector<Example> analysisExamples() {
  using namespace messages;
  return {
      {"duplicateInstrumentIds", duplicateInstrumentIds({}, "101")},
      {"duplicateStaffNumbers", duplicateStaffNumbers({}, "1")},
      {"zeroInstrumentIds", zeroInstrumentIds({})},
      {"recursiveCues", recursiveCues({})},
      {"undefinedCues", undefinedCues({}, "7")},
      {"noSystemBarline", noSystemBarline("X")},
      {"reportNotCreated", reportNotCreated("X")},
      {"reportNotReadForVerdict", reportNotReadForVerdict()},
      {"reportNotShown", reportNotShown("X", "X")},
      {"reportNotReadForCount", reportNotReadForCount()},
      {"reportNotReadForConversion", reportNotReadForConversion()},
      {"verdictNotCreated", verdictNotCreated()},
      {"verdictNotRead", verdictNotRead()},
      {"qualifies", qualifies()},
      {"analysisResult", analysisResult({})},
      {"convertNow", convertNow()},
  };
}

std::vector<Example> inputExamples() {
  using namespace messages;
  return {
      {"recordNotTerminated", recordNotTerminated("X", "N")},
      {"recordWithoutFolder", recordWithoutFolder("X", "N")},
      {"foldersDiffer", foldersDiffer("N")},
      {"fileMissingOnDiskette", fileMissingOnDiskette("A:\\X")},
      {"fileMissing", fileMissing("X")},
      {"namesFileNotErased", namesFileNotErased("N")},
      {"namesFileNotCreated", namesFileNotCreated("N")},
      {"noInputFiles", noInputFiles("N")},
      {"namingProblem", namingProblem("X", "F")},
      {"nameWithoutNumber", nameWithoutNumber("X")},
      {"reservedName", reservedName("X")},
      {"oddPageLetters", oddPageLetters("X", "BA", "X")},
      {"structuralError", structuralError("X", 1, "F")},
      {"structuralErrorInSort", structuralErrorInSort("X", 1)},
      {"tooManyItems", tooManyItems("X")},
      {"resultNotWritten", resultNotWritten("X")},
      {"resultUnreadable", resultUnreadable("X", 1, {})},
      {"exchangeOfDifferentKinds", exchangeOfDifferentKinds()},
      {"exchangeOfUnknownKind", exchangeOfUnknownKind()},
  };
}

std::vector<Example> conversionExamples() {
  using namespace messages;
  return {
      {"noStaves", noStaves(1)},
      {"instrumentNotInOrder", instrumentNotInOrder(1)},
      {"noPlaceForStaff", noPlaceForStaff(1, 1)},
      {"noPlaceOnTop", noPlaceOnTop(1)},
      {"noRestStaff", noRestStaff("P")},
      {"noReferenceStaff", noReferenceStaff("P")},
      {"noBeatInBar", noBeatInBar()},
      {"resultsNotChecked", resultsNotChecked({})},
      {"noTimeSignature", noTimeSignature()},
      {"oddTimeSignature", oddTimeSignature(0, 4)},
      {"fileExists", fileExists("X")},
      {"stoppedByUser", stoppedByUser()},
      {"created", created(1, "X", "X")},
      {"sortProblem", sortProblem()},
      {"systemBarlineProblem", systemBarlineProblem()},
      {"sortFinished", sortFinished()},
  };
}

std::vector<Example> otherExamples() {
  using namespace messages;
  return {
      {"overflow", overflow({})},
      {"subscriptOutOfRange", subscriptOutOfRange({})},
      {"overflowInRecord", overflowInRecord("R", {})},
      {"typeMismatchInRecord", typeMismatchInRecord("R", {})},
      {"overflowIn", overflowIn("X")},
      {"divisionByZero", divisionByZero(1)},
      {"invalidArgument", invalidArgument("X")},
      {"platformFailure", platformFailure("Full", "X")},
      {"readFailure", readFailure("X")},
      {"fileChanged", fileChanged("X")},
      {"invalidCall", invalidCall("X")},
      {"settingsFileNotOpened", settingsFileNotOpened("X")},
      {"moduleMissing", moduleMissing("X")},
      {"dropError", dropError(461)},
      {"folderModuleMissing", folderModuleMissing()},
      {"folderAnswerNotRead", folderAnswerNotRead()},
      {"programNotStarted", programNotStarted("X")},
      {"notACommand", notACommand("X")},
  };
}

std::vector<Example> warningExamples() {
  using namespace messages;
  return {
      {"tooManyStaves", tooManyStaves(33, {})},
      {"severalZeroIds", severalZeroIds(2, {})},
      {"repeatedInstrumentId", repeatedInstrumentId({})},
      {"repeatedStaffNumber", repeatedStaffNumber({})},
      {"negativeInstrumentId", negativeInstrumentId(-1, {})},
      {"nameWithComma", nameWithComma("X")},
      {"hiddenBottomStaff", hiddenBottomStaff(1, {})},
      {"itemsOnNoStaff", itemsOnNoStaff(1, 0, {})},
      {"itemsOnHiddenStaff", itemsOnHiddenStaff(1, 0, {})},
      {"repeatedIdInSort", repeatedIdInSort({})},
      {"severalZeroIdsInSort", severalZeroIdsInSort(2, {})},
      {"repeatedStaffNumberInSort", repeatedStaffNumberInSort({})},
      {"shortTextCut", shortTextCut({})},
      {"textFilled", textFilled({})},
      {"staffP4Cleared", staffP4Cleared(1, {})},
      {"barRestLength", barRestLength({101}, 4, 3, {})},
      {"barTwoRests", barTwoRests({101}, {})},
      {"barWithoutRest", barWithoutRest({101}, {})},
      {"keyDiffers", keyDiffers({101}, {})},
      {"timeDiffers", timeDiffers({101}, {})},
      {"lateEntryUnknown", lateEntryUnknown({101}, {})},
      {"clefDiffers", clefDiffers({101}, {})},
      {"braceDisplaced", braceDisplaced(1, {})},
      {"stavesDisagree", stavesDisagree(3, {})},
      {"durationTooLong", durationTooLong(1024, {})},
      {"keyNotShown", keyNotShown({})},
      {"noTimeSignature", noTimeSignature({})},
  };
}

std::vector<Example> examples() {
  std::vector<Example> all;
  for (auto part : {analysisExamples(), inputExamples(), conversionExamples(), otherExamples(), warningExamples()}) {
    std::ranges::move(part, std::back_inserter(all));
  }
  return all;
}

// --- the sources ---

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

/// The sources, by their names in src: those of the messages, or all others.
std::vector<fs::path> sources(bool ofMessages) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(SOURCE_FOLDER)) {
    const std::string suffix = entry.path().extension().string();
    const fs::path name = fs::relative(entry.path(), SOURCE_FOLDER);
    if ((suffix == ".cpp" || suffix == ".h") && (*name.begin() == "messages") == ofMessages) {
      files.push_back(name);
    }
  }
  return files;
}

std::string sourceOf(const fs::path& name) {
  return contentOf(fs::path(SOURCE_FOLDER) / name);
}

TEST(MessageCodes, TheExamplesAreOfEveryFunction) {
  constexpr const char* declaration = R"((?:^|\n)Message (\w+)\()";
  Texts declared;
  for (const fs::path& name : sources(true)) {
    if (name.extension() == ".h" && name.filename() != "message.h") {
      declared.merge(firstGroupsIn(sourceOf(name), declaration));
    }
  }
  Texts functions;
  for (const Example& example : examples()) {
    functions.insert(example.function);
  }
  EXPECT_EQ(functions, declared);
  EXPECT_GT(declared.size(), 60U) << "the functions are no longer found in the headers";
}

TEST(MessageCodes, EveryMessageHasOneAndEveryCodeHasAMessage) {
  constexpr const char* definition = R"re(inline constexpr std::string_view \w+ = "([^"]+)")re";
  const Texts codes = firstGroupsIn(sourceOf("messages/codes.h"), definition);
  Texts used;
  for (const Example& example : examples()) {
    used.emplace(example.message.code);
    EXPECT_FALSE(example.message.text.empty()) << example.function;
  }
  EXPECT_EQ(used, codes);
}

TEST(MessageCodes, OnlyMessagesOfThePanelAndItsStartHaveNoneOfTheirOwn) {
  Texts others;
  for (const Example& example : examples()) {
    if (example.message.code == code::other) {
      others.insert(example.function);
    }
  }
  EXPECT_EQ(others,
            (Texts{"convertNow", "dropError", "folderAnswerNotRead", "folderModuleMissing", "invalidCall",
                   "moduleMissing", "namesFileNotCreated", "notACommand", "reportNotShown", "settingsFileNotOpened"}));
}

TEST(MessageCodes, NoOtherSourceBuildsAMessage) {
  // Users show icons, and a problem has the one of its message.
  const Texts readers = {"diagnostics/problems.h", "platform/console/console_user.cpp",
                         "platform/win32/win32_user.cpp"};
  Texts found;
  for (const fs::path& name : sources(false)) {
    if (sourceOf(name).find("Icon::") != std::string::npos) {
      found.insert(name.generic_string());
    }
  }
  EXPECT_EQ(found, readers);
}

TEST(MessageCodes, NoOtherSourceHasTheTextOfAMessage) {
  constexpr const char* literal = R"re("((?:[^"\\\n]|\\.)*)")re";
  constexpr std::size_t shortestText = 12;  // shorter ones, and single words, are used elsewhere as well
  Texts texts;
  for (const fs::path& name : sources(true)) {
    if (name.extension() == ".cpp") {
      texts.merge(firstGroupsIn(sourceOf(name), literal));
    }
  }
  std::erase_if(
      texts, [](const std::string& text) { return text.size() < shortestText || text.find(' ') == std::string::npos; });
  EXPECT_GT(texts.size(), 50U) << "the texts are no longer found in the sources";
  for (const fs::path& name : sources(false)) {
    for (const std::string& other : firstGroupsIn(sourceOf(name), literal)) {
      EXPECT_FALSE(texts.contains(other)) << name << ": " << other;
    }
  }
}

// --- messages that differ only in their details ---

TEST(MessageCodes, TheSameFindingHasTheSameCodeOnEveryKindOfPage) {
  EXPECT_EQ(messages::duplicateStaffNumbers({.multifile = false, .file = "X"}, "1").code, code::duplicateStaffNumber);
  EXPECT_EQ(messages::duplicateStaffNumbers({.multifile = true, .file = "X"}, "1").code, code::duplicateStaffNumber);
  EXPECT_EQ(messages::fileMissing("X").code, messages::fileMissingOnDiskette("A:\\X").code);
}

TEST(MessageCodes, RunTimeErrorsWithThePlatformsTextShareOne) {
  EXPECT_EQ(messages::platformFailure("Overflow of the disk", "X").code, code::runTimeError);
  EXPECT_EQ(messages::overflowIn("X").code, code::overflow);
}

}  // namespace
}  // namespace kiv::test
