#include "conversion/report_index.h"

#include <memory>
#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/report.h"
#include "base/number.h"
#include "tests/platform/scripted_input.h"
#include "tests/support/fake_host.h"
#include "tests/support/random.h"

namespace kiv {

void PrintTo(const StaffRecord& staff, std::ostream* out) {
  *out << "instrument " << staff.instrId << ", staff " << staff.staff << " of \"" << staff.file << "\" becomes "
       << staff.newStaff << ", up " << staff.stavesUp;
}

}  // namespace kiv

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

using Staves = std::vector<StaffRecord>;

/// A report as Convert takes it up.
class ReportIndexTest : public ::testing::Test {
 protected:
  static std::string record(const std::string& system, const std::string& instrument,
                            const std::string& file = "C:\\M\\X1.MUS") {
    return "SYSTEM=" + system + ",INSTRID=" + instrument + ",NEWSTAFF=1,STAVESUP=0,STAFF=1,FILE=" + file + "\r\n";
  }
  void read(const std::string& lines) {
    host.messages.clear();
    host.addFile("KivSystem2.TXT", lines);
    end = endOf([&] { report = readReport(host); });
  }
  /// The staves of a system, in a report of these lines.
  Staves staves(std::int16_t system, const std::string& lines) {
    read(lines);
    EXPECT_EQ(end, std::nullopt) << lines;
    Staves found;
    end = endOf([&] { found = stavesOf(host, report, system); });
    return found;
  }
  /// The instrument identifiers of a system, in a report of these lines.
  std::vector<int> instrumentsIn(std::int16_t system, const std::string& lines) {
    std::vector<int> identifiers;
    for (const StaffRecord& staff : staves(system, lines)) {
      identifiers.push_back(staff.instrId);
    }
    return identifiers;
  }
  int systemCountOf(const std::string& lines) {
    read(lines);
    return report.systemCount();
  }
  std::vector<std::int16_t> orderOf(const std::string& lines) {
    read(lines);
    return report.instruments;
  }
  void expectOverflow(const std::string& line) {
    EXPECT_EQ(end, 1) << line;
    EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\n" + line)});
  }

  FakeHost host;
  ReportIndex report;
  std::optional<int> end;
};

// --- which lines are records ---

TEST_F(ReportIndexTest, StavesStandUnderTheirSystemInTheOrderOfTheReport) {
  const std::string lines =
      "* KivSystem - v1.0.0.0\r\n"
      "SYSTEM=1,INSTRID=101,NEWSTAFF=3,STAVESUP=0,STAFF=4,FILE=C:\\M\\X1A.MUS\r\n"
      "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=3,STAFF=2,FILE=C:\\M\\X1B.MUS\r\n"
      "SYSTEM=2,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X2.MUS\r\n";
  EXPECT_EQ(staves(1, lines), (Staves{{101, 0, 4, "C:\\M\\X1A.MUS", 3}, {102, 3, 2, "C:\\M\\X1B.MUS", 1}}));
  EXPECT_EQ(staves(2, lines), (Staves{{102, 1, 1, "C:\\M\\X2.MUS", 1}}));
}

TEST_F(ReportIndexTest, StavesOfASystemNeedNotFollowEachOther) {
  const std::string lines = record("2", "7") + record("1", "9") + record("2", "8") + record("1", "6");
  EXPECT_THAT(instrumentsIn(1, lines), ElementsAre(9, 6));
  EXPECT_THAT(instrumentsIn(2, lines), ElementsAre(7, 8));
}

TEST_F(ReportIndexTest, EqualRecordsAreAStaffEach) {
  EXPECT_THAT(instrumentsIn(1, record("1", "7") + record("1", "7")), ElementsAre(7, 7));
}

TEST_F(ReportIndexTest, CommentIsIgnoredEvenWhenItContainsARecord) {
  read("*" + record("1", "5") + "* " + record("1", "6") + record("1", "7"));
  EXPECT_THAT(report.instruments, ElementsAre(7));
  EXPECT_THAT(stavesOf(host, report, 1), SizeIs(1));
  EXPECT_THAT(report.lastUse, SizeIs(1));
}

TEST_F(ReportIndexTest, OnlyAStarInFirstPlaceMakesAComment) {
  const std::string lines = " *" + record("1", "5") + "SYSTEM=1,INSTRID=6*\r\n";
  EXPECT_THAT(instrumentsIn(1, lines), ElementsAre(5, 6));
  EXPECT_THAT(report.instruments, ElementsAre(5, 6));
}

TEST_F(ReportIndexTest, LineWithoutASystemIsNoRecord) {
  read("\r\n,INSTRID=1,FILE=A\r\nSYSTEM,INSTRID=2\r\nSYSTEM =1,INSTRID=3\r\nsystem=1,INSTRID=4\r\n");
  EXPECT_THAT(report.instruments, IsEmpty());
  EXPECT_THAT(report.systems, IsEmpty());
  EXPECT_THAT(report.lastUse, IsEmpty());
}

TEST_F(ReportIndexTest, LineWithoutASystemMayHoldAnyIdentifier) {
  read("INSTRID=40000\r\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemMayStandAnywhereInTheLine) {
  EXPECT_THAT(instrumentsIn(3, "page,INSTRID=5,SYSTEM=3\r\nX,INSTRID=6,SUBSYSTEM=3\r\n"), ElementsAre(5, 6));
  EXPECT_THAT(report.instruments, ElementsAre(5, 6));
}

TEST_F(ReportIndexTest, LinesEndWithEitherSignAndTheLastNeedsNoEnd) {
  EXPECT_THAT(instrumentsIn(1, "SYSTEM=1,INSTRID=1\nSYSTEM=1,INSTRID=2\r\rSYSTEM=1,INSTRID=3\r\nSYSTEM=1,INSTRID=4"),
              ElementsAre(1, 2, 3, 4));
}

// --- the order of the instruments ---

TEST_F(ReportIndexTest, InstrumentHasOnePlaceThatOfItsFirstMention) {
  EXPECT_THAT(orderOf(record("1", "9") + record("1", "5") + record("2", "7") + record("3", "5") + record("3", "9")),
              ElementsAre(9, 5, 7));
}

TEST_F(ReportIndexTest, InstrumentsOfSystemsThatAreNotConvertedHaveTheirPlacesToo) {
  EXPECT_THAT(orderOf(record("4", "9") + record("-1", "8") + record("x", "7") + record("99999", "6")),
              ElementsAre(9, 8, 7, 6));
}

TEST_F(ReportIndexTest, IdentifierZeroIsOneLikeOthers) {
  EXPECT_THAT(orderOf(record("1", "0") + record("1", "-0") + record("1", "") + record("1", "none")), ElementsAre(0));
}

TEST_F(ReportIndexTest, IdentifiersThatAreEqualAsWholeNumbersAreOne) {
  EXPECT_THAT(orderOf(record("1", "7") + record("1", "007") + record("1", "7.25") + record("1", " 7") +
                      record("1", "70E-1") + record("1", "8")),
              ElementsAre(7, 8));
}

TEST_F(ReportIndexTest, ReportWithoutRecordsNamesNoInstrument) {
  EXPECT_THAT(orderOf(""), IsEmpty());
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(report.systemCount(), 0);
}

TEST_F(ReportIndexTest, OrderTakesALongerKeysValueWhereTheStaffDoesNot) {
  const std::string line = "SYSTEM=1,OLDINSTRID=8,INSTRID=5\r\n";
  EXPECT_THAT(orderOf(line), ElementsAre(8));
  EXPECT_THAT(instrumentsIn(1, line), ElementsAre(5));
}

TEST_F(ReportIndexTest, IdentifierInFrontOfItsLineIsTheOrdersOnly) {
  const std::string line = "INSTRID=8,SYSTEM=1\r\n";
  EXPECT_THAT(orderOf(line), ElementsAre(8));
  EXPECT_THAT(instrumentsIn(1, line), ElementsAre(0));
}

// --- values ---

TEST_F(ReportIndexTest, KeysStandInAnyOrder) {
  EXPECT_EQ(staves(1, "FILE=no,NEWSTAFF=6,STAFF=7,FILE=C:\\A.MUS,STAVESUP=8,INSTRID=9,SYSTEM=1\r\n"),
            (Staves{{9, 8, 7, "C:\\A.MUS", 6}}))
      << "a key in front of the line has no comma, and is not found";
}

TEST_F(ReportIndexTest, MissingKeysAreZeroAndNoFile) {
  EXPECT_EQ(staves(1, "SYSTEM=1\r\n"), (Staves{{0, 0, 0, "", 0}}));
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=,STAVESUP=,STAFF=,FILE=,NEWSTAFF=\r\n"), (Staves{{0, 0, 0, "", 0}}));
}

TEST_F(ReportIndexTest, FirstOfSeveralEqualKeysCounts) {
  EXPECT_EQ(staves(1,
                   "SYSTEM=1,SYSTEM=2,INSTRID=3,INSTRID=4,STAVESUP=5,STAVESUP=6,STAFF=7,STAFF=8,FILE=A,FILE=B,"
                   "NEWSTAFF=9,NEWSTAFF=10\r\n"),
            (Staves{{3, 5, 7, "A", 9}}));
  EXPECT_THAT(report.systems, SizeIs(1));
}

TEST_F(ReportIndexTest, FileNameEndsAtACommaInsideIt) {
  EXPECT_EQ(staves(1, record("1", "7", "C:\\M\\X, Y1.MUS")).at(0).file, "C:\\M\\X");
}

TEST_F(ReportIndexTest, FileNameIsKeptAsItStands) {
  EXPECT_EQ(staves(1, record("1", "7", " c:\\m\\\xE4=1.Mus ")).at(0).file, " c:\\m\\\xE4=1.Mus ");
}

TEST_F(ReportIndexTest, NumbersAreTheLeadingOnesOfTheirTexts) {
  EXPECT_THAT(instrumentsIn(1, record("1", "  12") + record("1", "12 abc") + record("1", "abc12") + record("1", "-3x") +
                                   record("1", "1.2E2Z") + record("1", "+4")),
              ElementsAre(12, 12, 0, -3, 120, 4));
}

TEST_F(ReportIndexTest, FractionsAreRoundedHalvesToEven) {
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=2.5,STAVESUP=3.5,STAFF=-0.5,FILE=A,NEWSTAFF=1.5\r\n"),
            (Staves{{2, 4, 0, "A", 2}}));
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=2.51,STAVESUP=3.49,STAFF=-1.5,FILE=A,NEWSTAFF=0.5\r\n"),
            (Staves{{3, 3, -2, "A", 0}}));
  EXPECT_THAT(report.instruments, ElementsAre(3));
}

TEST_F(ReportIndexTest, NumbersAreNotCutToSinglesBeforeTheyAreRounded) {
  EXPECT_THAT(instrumentsIn(1, record("1", "2.5000000001") + record("1", "3.4999999999") + record("1", "32767.4999")),
              ElementsAre(3, 3, 32767));
}

TEST_F(ReportIndexTest, NumbersUpToTheEdgeOf16BitsAreTaken) {
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=32767.4,STAVESUP=-32768,STAFF=-32768.5,FILE=A,NEWSTAFF=32767\r\n"),
            (Staves{{32767, -32768, -32768, "A", 32767}}));
}

TEST_F(ReportIndexTest, IdentifierBeyond16BitsIsARunTimeErrorAtOnce) {
  for (const char* identifier : {"32768", "32767.5", "-32768.6", "-32769", "1E99", "1E999", "-1E999"}) {
    read(record("1", "5") + "SYSTEM=9,INSTRID=" + identifier + ",STAFF=1\r\n" + record("2", "6"));
    expectOverflow("SYSTEM=9,INSTRID=" + std::string(identifier) + ",STAFF=1");
  }
}

TEST_F(ReportIndexTest, OtherNumbersBeyond16BitsAreErrorsOfTheirSystemOnly) {
  for (const char* key : {",INSTRID=", ",STAVESUP=", ",STAFF=", ",NEWSTAFF="}) {
    for (const char* number : {"32768", "32767.5", "-32769", "1E9"}) {
      const std::string line = "SYSTEM=2,OLDINSTRID=5" + std::string(key) + number + ",FILE=A";
      EXPECT_THAT(instrumentsIn(1, record("1", "5") + line + "\r\n"), ElementsAre(5));
      EXPECT_EQ(end, std::nullopt);
      end = endOf([&] { stavesOf(host, report, 2); });
      expectOverflow(line);
    }
  }
}

// --- systems ---

TEST_F(ReportIndexTest, SystemsAreCountedUpToTheFirstGap) {
  EXPECT_EQ(systemCountOf(record("1", "5") + record("2", "5") + record("4", "5")), 2);
  EXPECT_EQ(systemCountOf(record("1", "5") + record("2", "5") + record("3", "5") + record("4", "5")), 4);
  EXPECT_EQ(systemCountOf(record("3", "5") + record("1", "5") + record("2", "5")), 3) << "in any order";
  EXPECT_EQ(systemCountOf(record("0", "5") + record("2", "5") + record("3", "5")), 0);
}

TEST_F(ReportIndexTest, SystemWithoutRecordsHasNoStaves) {
  EXPECT_THAT(staves(3, record("1", "5") + record("2", "5") + record("4", "5")), IsEmpty());
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemNumberIsComparedByValue) {
  EXPECT_THAT(instrumentsIn(1, record("1", "1") + record("01", "2") + record(" 1", "3") + record("1.0", "4") +
                                   record("0.1E1", "5") + record("1x", "6") + record("+1", "7")),
              ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST_F(ReportIndexTest, SystemNumberIsNotRounded) {
  const std::string lines = record("0.9999999999", "1") + record("1.0000000001", "2") + record("1.5", "3") +
                            record("2.5", "4") + record("-1", "5") + record("11", "6");
  EXPECT_THAT(staves(1, lines), IsEmpty());
  EXPECT_THAT(staves(2, lines), IsEmpty());
  EXPECT_EQ(report.systemCount(), 0);
}

TEST_F(ReportIndexTest, SystemNumberMayBeOfAnySize) {
  EXPECT_EQ(systemCountOf(record("1", "5") + record("32768", "5") + record("1E99", "5") + record("-1E999", "5")), 1);
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemWithoutANumberIsZeroAndNotConverted) {
  EXPECT_THAT(instrumentsIn(0, record("", "5") + record("one", "6") + record("-0", "7")), ElementsAre(5, 6, 7));
  EXPECT_EQ(report.systemCount(), 0);
}

// --- how long a page file is needed ---

TEST_F(ReportIndexTest, PageFileIsInUseUpToItsHighestSystem) {
  read(record("1", "5", "A") + record("3", "5", "A") + record("2", "5", "A") + record("2", "6", "B") +
       record("1.5", "5", "a") + "SYSTEM=4,INSTRID=5\r\n" + record("-7", "5", "C,D"));
  EXPECT_THAT(report.lastUse,
              UnorderedElementsAre(Pair("A", 3), Pair("B", 2), Pair("a", 1.5), Pair("", 4), Pair("C", -7)));
}

TEST_F(ReportIndexTest, PageFileInUseIsTheOneThatTheStaffIsReadFrom) {
  const std::string line = "FILE=A,SYSTEM=1,OLDFILE=B,FILE=C\r\n";
  EXPECT_EQ(staves(1, line).at(0).file, "C");
  EXPECT_THAT(report.lastUse, UnorderedElementsAre(Pair("C", 1)));
}

// --- the file ---

TEST_F(ReportIndexTest, ReportThatCannotBeOpenedEndsTheProgram) {
  EXPECT_EQ(endOf([&] { readReport(host); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to open file KivSystem2.TXT")});
}

TEST_F(ReportIndexTest, ReportLiesInTheCurrentFolder) {
  host.folder = "C:\\ELSEWHERE";
  host.addFile("C:\\ELSEWHERE\\KivSystem2.TXT", record("1", "5"));
  EXPECT_THAT(readReport(host).instruments, ElementsAre(5));
}

TEST_F(ReportIndexTest, ReportIsReadOnceHoweverManySystemsItHas) {
  staves(1, record("1", "5") + record("2", "5"));
  stavesOf(host, report, 2);
  stavesOf(host, report, 3);
  EXPECT_EQ(host.timesRead("KivSystem2.TXT"), 1);
}

TEST_F(ReportIndexTest, HalfAReportIsNotConverted) {
  class FailingDisk : public FakeHost {
   public:
    std::unique_ptr<InputFile> openInput(const std::string&) override {
      return std::make_unique<ScriptedInput>(
          std::deque<ScriptedInput::Portion>{"SYSTEM=1,INSTRID=5\r\nSYSTEM=2,INS", std::nullopt});
    }
  };
  FailingDisk disk;
  EXPECT_EQ(endOf([&] { readReport(disk); }), 1);
  EXPECT_EQ(disk.messages, std::vector{critical("Run-time error: Device I/O error\r\nKivSystem2.TXT")});
}

// --- against the rules as they are put, line by line for every system anew ---

std::int16_t wholeOf(std::string_view line, std::string_view key) {
  return toInt16(numericValue(getElt(line, key))).value();
}

bool isRecord(const std::string& line) {
  return !line.starts_with("*") && line.find("SYSTEM=") != std::string::npos;
}

Staves plainStaves(const std::vector<std::string>& lines, std::int16_t system) {
  Staves found;
  for (const std::string& line : lines) {
    if (isRecord(line) && numericValue(getElt(line, "SYSTEM")) == system) {
      found.push_back({wholeOf(line, ",INSTRID"), wholeOf(line, ",STAVESUP"), wholeOf(line, ",STAFF"),
                       std::string(getElt(line, ",FILE")), wholeOf(line, ",NEWSTAFF")});
    }
  }
  return found;
}

std::vector<std::int16_t> plainOrder(const std::vector<std::string>& lines) {
  std::vector<std::int16_t> instr;
  for (const std::string& line : lines) {
    if (!isRecord(line)) {
      continue;
    }
    const std::int16_t identifier = wholeOf(line, "INSTRID");
    bool known = false;
    for (const std::int16_t other : instr) {
      known = known || other == identifier;
    }
    if (!known) {
      instr.push_back(identifier);
    }
  }
  return instr;
}

std::string randomLine(Dice& dice) {
  const char* keys[] = {"SYSTEM", "INSTRID", "NEWSTAFF", "STAVESUP", "STAFF", "FILE", "SUBSYSTEM", "X"};
  const char* values[] = {"1", "2", "3", " 2", "2.5", "1.0", "4x", "", "-3", "X1", "12"};
  std::string line = dice.oneIn(8) ? "*" : "";
  for (std::uint32_t field = dice.below(7); field > 0; --field) {
    line += std::string(keys[dice.below(std::size(keys))]) + "=" + values[dice.below(std::size(values))] + ",";
  }
  return dice.oneIn(2) ? "SYSTEM=" + std::to_string(dice.below(5)) + "," + line : line;
}

TEST_F(ReportIndexTest, AnyReportIsReadAsTheRulesSay) {
  Dice dice(51);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::string> lines(dice.below(12));
    std::string text;
    for (std::string& line : lines) {
      line = randomLine(dice);
      text += line + "\r\n";
    }
    ASSERT_EQ(orderOf(text), plainOrder(lines)) << text;
    int systems = 0;
    while (!plainStaves(lines, static_cast<std::int16_t>(systems + 1)).empty()) {
      ++systems;
    }
    ASSERT_EQ(report.systemCount(), systems) << text;
    for (std::int16_t system = -3; system < 13; ++system) {
      ASSERT_EQ(stavesOf(host, report, system), plainStaves(lines, system)) << text << system;
    }
  }
}

}  // namespace
}  // namespace kiv::test
