#include "analysis/report_record.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

// --- fields ---

constexpr std::string_view record = "SYSTEM=3,INSTRID=7,NEWSTAFF=5,STAVESUP=0,STAFF=2,FILE=A.MUS";

TEST(GetElt, KeyWithoutCommaMatchesInsideALongerOne) {
  EXPECT_EQ(getElt(record, "STAFF"), "5");
}

TEST(GetElt, KeyWithLeadingCommaIsTheWholeKey) {
  EXPECT_EQ(getElt(record, ",STAFF"), "2");
}

TEST(GetElt, EveryKeyOfARecord) {
  EXPECT_EQ(getElt(record, "SYSTEM"), "3");
  EXPECT_EQ(getElt(record, ",INSTRID"), "7");
  EXPECT_EQ(getElt(record, ",NEWSTAFF"), "5");
  EXPECT_EQ(getElt(record, ",STAVESUP"), "0");
  EXPECT_EQ(getElt(record, ",FILE"), "A.MUS");
}

TEST(GetElt, MissingKeyIsEmpty) {
  EXPECT_EQ(getElt(record, ",SYSTEM"), "");
  EXPECT_EQ(getElt(record, "PAGE"), "");
  EXPECT_EQ(getElt("", "SYSTEM"), "");
}

TEST(GetElt, FileNameEndsAtACommaInsideIt) {
  EXPECT_EQ(getElt("STAFF=2,FILE=C:\\A,B.MUS", ",FILE"), "C:\\A");
}

TEST(GetElt, KeysAreCaseSensitive) {
  EXPECT_EQ(getElt(record, "system"), "");
}

TEST(GetElt, FirstOccurrenceCounts) {
  EXPECT_EQ(getElt("SYSTEM=1,SYSTEM=2", "SYSTEM"), "1");
}

TEST(GetElt, KeyCountsWithItsEqualsSignOnly) {
  EXPECT_EQ(getElt("STAFFS=1,STAFF,STAFF=2", "STAFF"), "2");
  EXPECT_EQ(getElt("STAVES,STAFF", "STAFF"), "");
  EXPECT_EQ(getElt("AAA=1", "AA"), "1") << "its second and third characters";
}

TEST(GetElt, ValueMayBeEmpty) {
  EXPECT_EQ(getElt("SYSTEM=,INSTRID=", "SYSTEM"), "");
}

TEST(FindElt, DistinguishesAMissingKeyFromAnEmptyValue) {
  EXPECT_EQ(findElt(record, ",INSTRID"), "7");
  EXPECT_EQ(findElt("SYSTEM=,INSTRID=", "SYSTEM"), "");
  EXPECT_EQ(findElt(record, "PAGE"), std::nullopt);
}

// --- records ---

TEST(ReportRecord, GivesItsFields) {
  const ReportRecord fields(record);
  EXPECT_EQ(fields.line(), record);
  EXPECT_EQ(fields.text(ReportRecord::system), "3");
  EXPECT_EQ(fields.text(ReportRecord::instrument), "7");
  EXPECT_EQ(fields.text(ReportRecord::anyInstrument), "7");
  EXPECT_EQ(fields.text(ReportRecord::newStaff), "5");
  EXPECT_EQ(fields.text(ReportRecord::stavesUp), "0");
  EXPECT_EQ(fields.text(ReportRecord::staff), "2");
  EXPECT_EQ(fields.file(), "A.MUS");
}

TEST(ReportRecord, NamesASystemAnywhereInItsLine) {
  EXPECT_TRUE(ReportRecord(record).namesSystem());
  EXPECT_TRUE(ReportRecord("X,SYSTEM=").namesSystem());
  EXPECT_FALSE(ReportRecord("SYSTEM 3").namesSystem());
  EXPECT_FALSE(ReportRecord("").namesSystem());
}

TEST(ReportRecord, FileToEndKeepsTheCommasOfTheName) {
  const ReportRecord fields("SYSTEM=1,STAFF=2,FILE=C:\\A,B\\X1.MUS");
  EXPECT_EQ(fields.fileToEnd(), "C:\\A,B\\X1.MUS");
  EXPECT_EQ(fields.file(), "C:\\A") << "as a conversion reads it";
  EXPECT_EQ(ReportRecord(record).fileToEnd(), "A.MUS");
}

TEST(ReportRecord, FileToEndIsEmptyWithoutTheField) {
  for (const char* line : {"", "SYSTEM=1", "FILE=A.MUS", "SYSTEM=1,FILE", "SYSTEM=1,FILE="}) {
    EXPECT_EQ(ReportRecord(line).fileToEnd(), "") << line;
  }
}

// --- numbers ---

/// What a record of this instrument gives, and how it ends the program.
class ReportRecordNumber : public ::testing::Test {
 protected:
  std::int16_t leading(const std::string& value) {
    return numberOf(value, [](const ReportRecord& fields) { return fields.leadingWhole(ReportRecord::instrument); });
  }
  std::int16_t strict(const std::string& value) {
    return numberOf(value, [](const ReportRecord& fields) { return fields.strictWhole(ReportRecord::instrument); });
  }
  static std::optional<std::int16_t> wholeOrNone(const std::string& value) {
    return ReportRecord(lineOf(value)).wholeOrNone(ReportRecord::instrument);
  }
  static std::string lineOf(const std::string& value) { return "SYSTEM=3,INSTRID=" + value + ",STAFF=2,FILE=A,B.MUS"; }

  void expectEnd(const std::string& error, const std::string& value, const Location& location) {
    EXPECT_EQ(end, 1) << value;
    EXPECT_EQ(host.messages, std::vector{critical("Run-time error: " + error + "\r\n" + lineOf(value))});
    EXPECT_EQ(host.shown.back().location, location) << value;
  }

  FakeHost host;
  std::optional<int> end;

 private:
  template <typename Number>
  std::int16_t numberOf(const std::string& value, Number number) {
    const std::string line = lineOf(value);
    std::int16_t result = -1;
    host.messages.clear();
    end = endOf(host, [&] { result = number(ReportRecord(line)); });
    return result;
  }
};

TEST_F(ReportRecordNumber, LeadingWholeIsTheRoundedNumberAtTheBeginning) {
  EXPECT_EQ(leading("7"), 7);
  EXPECT_EQ(leading("-12"), -12);
  EXPECT_EQ(leading("7 and more"), 7);
  EXPECT_EQ(leading("  7"), 7);
  EXPECT_EQ(leading("2.5"), 2);
  EXPECT_EQ(leading("3.5"), 4);
  EXPECT_EQ(leading("1E2"), 100);
  EXPECT_EQ(leading("x"), 0);
  EXPECT_EQ(leading(""), 0);
  EXPECT_EQ(leading("NAN"), 0);
}

TEST_F(ReportRecordNumber, LeadingWholeOfAMissingFieldIsZero) {
  EXPECT_EQ(ReportRecord("SYSTEM=3").leadingWhole(ReportRecord::instrument), 0);
}

TEST_F(ReportRecordNumber, LeadingWholeThatDoesNotFitEndsTheProgram) {
  leading("1E+07");
  expectEnd("Overflow", "1E+07", {.file = "A,B.MUS", .staff = 2, .instrument = 1e7, .system = 3});
  leading("40000x");
  expectEnd("Overflow", "40000x", {.file = "A,B.MUS", .staff = 2, .system = 3});
}

TEST_F(ReportRecordNumber, StrictWholeIsTheRoundedNumberThatTheTextIs) {
  EXPECT_EQ(strict("7"), 7);
  EXPECT_EQ(strict("+7"), 7);
  EXPECT_EQ(strict("2.5"), 2);
  EXPECT_EQ(strict("-3.5"), -4);
  EXPECT_EQ(strict("1E2"), 100);
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportRecordNumber, StrictWholeOfAMissingFieldIsZero) {
  EXPECT_EQ(ReportRecord("SYSTEM=3").strictWhole(ReportRecord::instrument), 0);
}

TEST_F(ReportRecordNumber, StrictWholeOfAnotherTextEndsTheProgram) {
  for (const char* value : {"", "x", " 7", "7 ", "7x", "NAN", "INF"}) {
    strict(value);
    expectEnd("Type mismatch", value, {.file = "A,B.MUS", .staff = 2, .system = 3});
  }
}

TEST_F(ReportRecordNumber, StrictWholeThatDoesNotFitEndsTheProgram) {
  strict("32768");
  expectEnd("Overflow", "32768", {.file = "A,B.MUS", .staff = 2, .instrument = 32768, .system = 3});
}

TEST_F(ReportRecordNumber, WholeOrNoneIsNoneWhereThereIsNoSuchNumber) {
  EXPECT_EQ(wholeOrNone("7"), 7);
  EXPECT_EQ(wholeOrNone("2.5"), 2);
  for (const char* value : {"", "x", " 7", "7x", "40000", "NAN"}) {
    EXPECT_EQ(wholeOrNone(value), std::nullopt) << value;
  }
  EXPECT_EQ(ReportRecord("SYSTEM=3").wholeOrNone(ReportRecord::instrument), std::nullopt);
}

// --- what it is about ---

TEST(ReportRecordLocation, IsTheStaffThatItLists) {
  EXPECT_EQ(ReportRecord("SYSTEM=3,INSTRID=102.5,NEWSTAFF=5,STAVESUP=0,STAFF=2.5,FILE=C:\\A,B.MUS").location(),
            (Location{.file = "C:\\A,B.MUS", .staff = 2.5, .instrument = 102.5, .system = 3}));
}

TEST(ReportRecordLocation, LeavesOutWhatIsNoNumber) {
  EXPECT_EQ(ReportRecord("SYSTEM=x,INSTRID=NAN,STAFF=,FILE=A.MUS").location(), (Location{.file = "A.MUS"}));
  EXPECT_EQ(ReportRecord("SYSTEM=40000").location(), Location{});
  EXPECT_EQ(ReportRecord("").location(), Location{});
}

}  // namespace
}  // namespace kiv::test
