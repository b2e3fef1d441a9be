#include "diagnostics/problems.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProblemsOf : public ::testing::Test, public DiagnosedRun {
 protected:
  Problem information(std::string_view code, std::size_t message = 0) const {
    Problem problem;
    problem.code = code;
    problem.severity = Icon::information;
    problem.message = message;
    return problem;
  }
  Problem critical(std::string_view code, const std::string& file = "", std::size_t message = 0) const {
    Problem problem = information(code, message);
    problem.severity = Icon::critical;
    if (!file.empty()) {
      problem.file = file;
    }
    return problem;
  }
  Problem at(std::string_view code, const std::string& file, std::int16_t system, double staff, double instrument,
             ItemPlace place) const {
    Problem problem = information(code);
    problem.file = "C:\\M\\" + file;
    problem.system = system;
    problem.staff = staff;
    problem.instrument = instrument;
    problem.place = place;
    return problem;
  }
};

TEST_F(ProblemsOf, ARunWithoutMessagesHasNoneAndNothingIsReadAgain) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  run();
  const int before = host.timesRead("KivSystem2.TXT") + host.timesRead("C:\\M\\X1.MUS");
  EXPECT_THAT(problems(), IsEmpty());
  EXPECT_EQ(host.timesRead("KivSystem2.TXT") + host.timesRead("C:\\M\\X1.MUS"), before);
}

TEST_F(ProblemsOf, DuplicateIdentifierIsAtEachStaffButTheTopOne) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  addPage("X2.MUS",
          "staff 3 at 0 instrument 105\nstaff 2 at 0 instrument 105\nstaff 1 at 0 instrument 105\n"
          "barline 1 at 0 spans 3\n");
  run();
  EXPECT_THAT(problems(), ElementsAre(at(code::duplicateInstrumentId, "X2.MUS", 2, 2, 105, {2, 42}),
                                      at(code::duplicateInstrumentId, "X2.MUS", 2, 1, 105, {3, 82})));
}

TEST_F(ProblemsOf, DuplicateStaffNumberIsAtTheSecondStaff) {
  addPage("X1.MUS", "staff 1 at 5 instrument 102\nstaff 1 at 0 instrument 101\n");
  run();
  // Both are bottom staves, so each is a system of its own, and neither is a duplicate.
  EXPECT_THAT(problems(), IsEmpty());
  host.messages.clear();
  host.shown.clear();
  addPage("X2.MUS",
          "staff 2 at 5 instrument 102\nstaff 2 at 0 instrument 101\nstaff 1 at 0 instrument 103\n"
          "barline 1 at 0 spans 2\n");
  run();
  EXPECT_THAT(problems(), ElementsAre(at(code::duplicateStaffNumber, "X2.MUS", 3, 2, 102, {1, 2})));
}

TEST_F(ProblemsOf, ZeroIdentifierIsAtItsStavesInTheirFiles) {
  addPage("X1A.MUS", "note 1 at 9\nstaff 1 at 0\n");
  addPage("X1B.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  run();
  EXPECT_THAT(problems(), ElementsAre(at(code::zeroInstrumentId, "X1A.MUS", 1, 1, 0, {2, 18})));
}

TEST_F(ProblemsOf, AllowedZerosAreNoProblemAndHideNoOther) {
  addPage("X1.MUS", "staff 1 at 0\nrest 1 at 5 kind -2 cue 105\n");
  run(true);
  EXPECT_THAT(problems(), ElementsAre(at(code::undefinedCue, "X1.MUS", 1, 1, 105, {2, 14})));
}

TEST_F(ProblemsOf, RecursiveCueIsCountedForEveryStaffOfItsInstrument) {
  addPage("X1.MUS",
          "staff 2 at 0 instrument 101\nrest 2 at 5 kind -2 cue 101\nstaff 1 at 0 instrument 101\n"
          "rest 1 at 5 kind -2 cue 7\nnote 1 at 9\n");
  run();
  Problem recursive = at(code::recursiveCue, "X1.MUS", 1, 2, 101, {2, 42});
  recursive.repeats = 2;
  Problem undefined = at(code::undefinedCue, "X1.MUS", 1, 2, 101, {2, 42});
  undefined.message = 1;
  Problem other = at(code::undefinedCue, "X1.MUS", 2, 1, 7, {4, 138});
  other.message = 1;
  EXPECT_THAT(problems(), ElementsAre(recursive, undefined, other));
}

TEST_F(ProblemsOf, SeveralPagesKeepTheOrderOfTheirMessages) {
  addPage("X1.MUS", "staff 1 at 0\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 1\n");
  addPage("X3.MUS", "staff 1 at 0\n");
  run();
  Problem second = at(code::zeroInstrumentId, "X3.MUS", 3, 1, 0, {1, 2});
  second.message = 1;
  EXPECT_THAT(problems(), ElementsAre(at(code::zeroInstrumentId, "X1.MUS", 1, 1, 0, {1, 2}), second));
}

TEST_F(ProblemsOf, PageLettersAreAtTheFirstFileChosen) {
  addPage("X1B.MUS", "staff 1 at 0 instrument 101\n");
  addPage("X1A.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  run();
  ASSERT_EQ(host.messages.size(), 1U);
  Problem problem = information(code::pageLetters);
  problem.file = "C:\\M\\X1B.MUS";
  EXPECT_THAT(problems(), ElementsAre(problem));
}

TEST_F(ProblemsOf, StructureErrorIsAtTheBrokenItem) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  addBytes("X2.MUS", page("note 1 at 5\nnote 1 at 7\n").substr(0, 30));
  run();
  ASSERT_EQ(end, 1);
  const std::vector<Problem> found = problems();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].code, code::structureError);
  EXPECT_EQ(found[0].severity, Icon::critical);
  EXPECT_EQ(found[0].file, "C:\\M\\X2.MUS");
  EXPECT_NE(host.messages[0].text.find("\r\nItem number = " + std::to_string(found[0].place->item)), std::string::npos);
  EXPECT_EQ(found[0].place->offset, 18U) << "after the head and an item of 16 bytes";
}

TEST_F(ProblemsOf, AFileThatIsNoPageHasItsErrorAtItsHead) {
  addBytes("X1.MUS", "");
  run();
  Problem problem = critical(code::structureError, "C:\\M\\X1.MUS");
  problem.place = ItemPlace{0, 0};
  EXPECT_THAT(problems(), ElementsAre(problem));
}

TEST_F(ProblemsOf, TooManyParametersAreAtTheirItem) {
  addBytes("X1.MUS",
           page("words 40\nnote 1 at 5\ntrailer none\nbytes 00 00 A8 41 00 00 80 3F\n") + std::string(96, '\0'));
  run();
  Problem problem = critical(code::subscriptOutOfRange, "C:\\M\\X1.MUS");
  problem.place = ItemPlace{2, 18};
  EXPECT_THAT(problems(), ElementsAre(problem));
}

TEST_F(ProblemsOf, AnIdentifierThatIsTooLargeIsAtItsStaff) {
  addPage("X1.MUS", "note 1 at 5\nstaff 1 at 0 instrument 40000\n");
  run();
  ASSERT_EQ(end, 1);
  Problem problem = critical(code::overflow, "C:\\M\\X1.MUS");
  problem.system = std::int16_t{1};
  problem.staff = 1;
  problem.instrument = 40000;
  problem.place = ItemPlace{2, 18};
  EXPECT_THAT(problems(), ElementsAre(problem));
}

TEST_F(ProblemsOf, NamesAndTheirFile) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  namesFile += "C:\\M\\X2.MUS\r\n";
  listFile("X3.MUS");
  run();
  Problem open = information(code::namesNotTerminated);
  open.file = "C:\\N.TXT";
  Problem gone = information(code::namesFileMissing, 1);
  gone.file = "C:\\M\\X3.MUS";
  EXPECT_THAT(problems(), ElementsAre(open, gone, critical(code::noInputFiles, "C:\\N.TXT", 2)));
}

TEST_F(ProblemsOf, EveryPlaceOfAMessageIsOne) {
  addPage("X1.MUS", "note 1 at 5\nstaff 1 at 0 instrument 101\n");
  kiv::Message message;
  message.code = code::zeroInstrumentId;
  message.location.file = "C:\\M\\X9.MUS";
  message.places = {{.file = "C:\\M\\X1.MUS", .item = 2, .system = std::int16_t{1}},
                    {.file = "C:\\M\\X1.MUS", .item = 9, .repeats = 3}};
  Problem second = information(code::zeroInstrumentId);
  second.file = "C:\\M\\X1.MUS";
  second.repeats = 3;
  EXPECT_THAT(findProblems(host, {message}),
              ElementsAre(at(code::zeroInstrumentId, "X1.MUS", 1, 1, 101, {2, 18}), second))
      << "an item that the page does not hold has no offset, and the location of the message itself is not used";
}

TEST_F(ProblemsOf, NamingAndReservedNames) {
  addPage("NO-.MUS", "");
  run();
  EXPECT_THAT(problems(), ElementsAre(critical(code::namingNoNumber, "C:\\M\\NO-.MUS")));
  host.messages.clear();
  host.shown.clear();
  namesFile.clear();
  addPage("WORK0001.MUS", "");
  run();
  EXPECT_THAT(problems(), ElementsAre(critical(code::reservedName, "C:\\M\\WORK0001.MUS")));
}

TEST_F(ProblemsOf, MessagesWithoutALocation) {
  host.unwritable.insert("KivSystem2.TXT");
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  run();
  EXPECT_THAT(problems(), ElementsAre(critical(code::reportNotCreated)));
}

}  // namespace
}  // namespace kiv::test
