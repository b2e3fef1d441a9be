#include "analysis/verdict.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

class Verdict : public ::testing::Test {
 protected:
  static std::string record(const std::string& system, const std::string& identifier) {
    return "SYSTEM=" + system + ",INSTRID=" + identifier + ",NEWSTAFF=1,STAVESUP=0,STAFF=1,FILE=C:\\M\\X1.MUS\r\n";
  }
  /// The verdict over a report of these lines.
  std::string verdictOf(const std::string& report, std::int16_t multifileCount = 0) {
    host.addFile("KivSystem2.TXT", report);
    end = endOf(host, [&] { phase5(host, multifileCount, table); });
    return host.file("KivSystem1.TXT");
  }

  /// The numbers of the systems, each with its identifiers: "1: 101, 104".
  std::vector<std::string> systems() const {
    std::vector<std::string> lines;
    for (const SystemTable::System& system : table.systems) {
      lines.push_back(std::to_string(system.systemNumber));
      const char* before = ": ";
      for (const std::int16_t identifier : table.lists.elements(system.systemInstrList)) {
        lines.back() += before + std::to_string(identifier);
        before = ", ";
      }
    }
    return lines;
  }

  FakeHost host;
  SystemTable table;
  std::optional<int> end;
};

const std::string consistent = "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n";
const std::string inconsistent = "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n";

TEST_F(Verdict, SameIdentifiersInTheSameOrderAreConsistent) {
  EXPECT_EQ(verdictOf(record("1", "101") + record("1", "104") + record("2", "101") + record("2", "104")), consistent);
}

TEST_F(Verdict, AnotherOrderIsInconsistent) {
  EXPECT_EQ(verdictOf(record("1", "101") + record("1", "104") + record("2", "104") + record("2", "101")), inconsistent);
}

TEST_F(Verdict, OneSystemIsAlwaysConsistent) {
  EXPECT_EQ(verdictOf(record("1", "7") + record("1", "7")), consistent);
}

TEST_F(Verdict, ReportWithoutRecordsIsConsistent) {
  EXPECT_EQ(verdictOf("* nothing\r\n"), consistent);
}

TEST_F(Verdict, ZeroIdentifiersCount) {
  EXPECT_EQ(verdictOf(record("1", "0") + record("1", "5") + record("2", "5")), inconsistent);
  EXPECT_EQ(verdictOf(record("1", "0") + record("2", "0")), consistent);
}

TEST_F(Verdict, OnlyALastSystemThatDiffersIsNoticed) {
  std::string report;
  for (int system = 1; system < 40; ++system) {
    report += record(std::to_string(system), "5");
  }
  EXPECT_EQ(verdictOf(report), consistent);
  EXPECT_EQ(verdictOf(report + record("40", "6")), inconsistent);
}

TEST_F(Verdict, PagesWithLettersAreMultifile) {
  EXPECT_EQ(verdictOf(record("1", "5"), 1), "CONSISTENCY=YES\r\nMULTIFILE=YES\r\n");
}

TEST_F(Verdict, CommentLinesAreSkipped) {
  EXPECT_EQ(verdictOf("* SYSTEM=1,INSTRID=x\r\n" + record("1", "5") + "*SYSTEM=2\r\n"), consistent);
  EXPECT_EQ(systems(), (std::vector<std::string>{"1: 5"}));
}

TEST_F(Verdict, SystemsAreListedInOrderOfAppearance) {
  verdictOf(record("2", "101") + record("1", "5") + record("2", "104"));
  EXPECT_EQ(systems(), (std::vector<std::string>{"2: 101, 104", "1: 5"}));
}

TEST_F(Verdict, ASystemContinuesWhereItsRecordsAreApart) {
  verdictOf(record("1", "101") + record("2", "5") + record("1", "104") + record("1", "102") + record("2", "6"));
  EXPECT_EQ(systems(), (std::vector<std::string>{"1: 101, 104, 102", "2: 5, 6"}));
}

TEST_F(Verdict, InstrumentsAreCountedByTheTextsOfTheirIdentifiers) {
  verdictOf("* x,INSTRID=5\r\nINSTRID=6\r\n" + record("1", "7") + record("1", "07") + record("2", "7"));
  EXPECT_EQ(table.instrumentCount, 2U) << "a comment, and a line without the whole keyword, have none";
  verdictOf(record("1", "7"));
  EXPECT_EQ(table.instrumentCount, 1U);
  verdictOf("");
  EXPECT_EQ(table.instrumentCount, 0U);
}

TEST_F(Verdict, LineThatIsNoRecordIsSystem0WithIdentifier0) {
  EXPECT_EQ(verdictOf("\r\nINSTRID=7\r\n" + record("1", "5")), inconsistent);
  EXPECT_EQ(systems(), (std::vector<std::string>{"0: 0, 7", "1: 5"}));
}

TEST_F(Verdict, NumbersAreRoundedHalvesToEven) {
  verdictOf(record("1.5", "2.5"));
  EXPECT_EQ(systems(), (std::vector<std::string>{"2: 2"}));
}

TEST_F(Verdict, ValueThatIsNoNumberIsARunTimeError) {
  for (const std::string value : {"NAN", "INF", "", " 1", "x"}) {
    host.messages.clear();
    verdictOf(record("1", value));
    EXPECT_EQ(end, 1);
    const std::string line = record("1", value);
    EXPECT_EQ(host.messages,
              std::vector{critical("Run-time error: Type mismatch\r\n" + line.substr(0, line.size() - 2))});
    EXPECT_EQ(host.shown.back().location, (Location{.file = "C:\\M\\X1.MUS", .staff = 1, .system = 1}));
  }
}

TEST_F(Verdict, ValueBeyond16BitsIsARunTimeError) {
  verdictOf("SYSTEM=40000,INSTRID=1\r\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nSYSTEM=40000,INSTRID=1")});
  host.messages.clear();
  verdictOf("SYSTEM=1,INSTRID=1E+07\r\n");
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nSYSTEM=1,INSTRID=1E+07")});
}

TEST_F(Verdict, RunTimeErrorLeavesTheOldVerdictAlone) {
  host.addFile("KivSystem1.TXT", "old");
  EXPECT_EQ(verdictOf("SYSTEM=x\r\n"), "old");
}

TEST_F(Verdict, EveryRunClearsTheTable) {
  verdictOf(record("1", "5") + record("2", "6"));
  verdictOf(record("3", "5"));
  EXPECT_EQ(systems(), (std::vector<std::string>{"3: 5"}));
}

TEST_F(Verdict, MissingReportEndsTheProgram) {
  EXPECT_EQ(endOf(host, [&] { phase5(host, 0, table); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Could not open file KivSystem2.TXT for input.")});
}

TEST_F(Verdict, VerdictThatCannotBeCreatedEndsTheProgram) {
  host.unwritable = {"KivSystem1.TXT"};
  verdictOf(record("1", "5"));
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to create file KivSystem1.TXT")});
}

TEST_F(Verdict, VerdictThatCannotBeWrittenEndsTheProgram) {
  host.writeFailure = "No space left on device";
  verdictOf(record("1", "5"));
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: No space left on device\r\nKivSystem1.TXT")});
}

/// A disk that fails after the first bytes of every file.
class FailingDisk : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    class Failing : public InputFile {
     public:
      explicit Failing(std::unique_ptr<InputFile> file) : file_(std::move(file)) {}
      std::optional<std::size_t> read(std::span<char> buffer) override {
        return ++reads_ == 1 ? file_->read(buffer.subspan(0, 100)) : std::nullopt;
      }

     private:
      std::unique_ptr<InputFile> file_;
      int reads_ = 0;
    };
    auto file = FakeHost::openInput(name);
    return file ? std::make_unique<Failing>(std::move(file)) : nullptr;
  }
};

TEST_F(Verdict, HalfAReportGivesNoVerdict) {
  FailingDisk disk;
  disk.addFile("KivSystem2.TXT", record("1", "5") + record("2", "6"));
  EXPECT_EQ(endOf(disk, [&] { phase5(disk, 0, table); }), 1);
  EXPECT_EQ(disk.messages, std::vector{critical("Run-time error: Device I/O error\r\nKivSystem2.TXT")});
  EXPECT_FALSE(disk.hasFile("KivSystem1.TXT"));
}

TEST_F(Verdict, EveryByteStringAsReportEndsInADocumentedResult) {
  std::mt19937 random(1);
  const std::string report = "* head\r\n" + record("1", "101") + record("2", "104");
  const auto isDocumented = [&] {
    return !end || (host.messages.size() == 1 && (host.messages[0].text.starts_with("Run-time error: Type mismatch") ||
                                                  host.messages[0].text.starts_with("Run-time error: Overflow")));
  };
  for (std::size_t cut = 0; cut <= report.size(); ++cut) {
    host.messages.clear();
    verdictOf(report.substr(0, cut));
    EXPECT_TRUE(isDocumented()) << cut;
  }
  for (std::size_t at = 0; at < report.size(); ++at) {
    std::string changed = report;
    changed[at] = static_cast<char>(random());
    host.messages.clear();
    verdictOf(changed);
    EXPECT_TRUE(isDocumented()) << changed;
  }
}

class NumberOfInstruments : public Verdict {};

TEST_F(NumberOfInstruments, CountsDistinctTexts) {
  host.addFile("KivSystem2.TXT", record("1", "7") + record("1", "07") + record("2", "7") + record("2", "101"));
  EXPECT_EQ(numberOfInstruments(host), 3);
}

TEST_F(NumberOfInstruments, SkipsCommentsAndLinesWithoutTheKeyword) {
  host.addFile("KivSystem2.TXT", "* x,INSTRID=5\r\nINSTRID=6\r\n\r\n" + record("1", "7"));
  EXPECT_EQ(numberOfInstruments(host), 1);
}

TEST_F(NumberOfInstruments, MoreThan16BitsCountIsARunTimeError) {
  std::string report;
  for (int i = 0; i < 32768; ++i) {
    report += ",INSTRID=" + std::to_string(i) + "\r\n";
  }
  host.addFile("KivSystem2.TXT", report);
  EXPECT_EQ(endOf(host, [&] { numberOfInstruments(host); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nKivSystem2.TXT")});
}

TEST_F(NumberOfInstruments, MissingReportEndsTheProgram) {
  EXPECT_EQ(endOf(host, [&] { numberOfInstruments(host); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to open KivSystem2.txt for input.")});
}

}  // namespace
}  // namespace kiv::test
