#include "analysis/records_in_memory.h"

#include <gtest/gtest.h>

#include "analysis/report.h"
#include "platform/line_reader.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

class RecordsInMemoryTest : public ::testing::Test {
 protected:
  void write(const std::string& name, const std::vector<std::string>& pieces) {
    const auto file = files.openOutput(name);
    for (const std::string& piece : pieces) {
      EXPECT_EQ(file->write(piece), std::nullopt);
    }
  }

  FakeHost host;
  RecordsInMemory files{host, host};
};

TEST_F(RecordsInMemoryTest, AReportIsKeptWithoutComments) {
  write(reportFile,
        {"* KivSystem\r\n* P1.MUS\r\n", "* Nr\r\nSYSTEM=1,STAFF=2,FILE=P1.MUS\r\nSYSTEM=1,STAFF=1,FILE=P1.MUS\r\n",
         "* ===\r\nSYSTEM=2,", "STAFF=10,FILE=P2.MUS\r\n"});
  EXPECT_EQ(readWhole(files, reportFile),
            "SYSTEM=1,STAFF=2,FILE=P1.MUS\r\nSYSTEM=1,STAFF=1,FILE=P1.MUS\r\nSYSTEM=2,STAFF=10,FILE=P2.MUS\r\n");
  EXPECT_EQ(readWhole(files, "kivsystem2.txt"), readWhole(files, reportFile)) << "in any case";
  EXPECT_FALSE(host.hasFile(reportFile));
}

TEST_F(RecordsInMemoryTest, LinesOfAnyLikenessAreKept) {
  const std::string longName(1000, 'x');
  std::string lines;
  for (const std::string& line :
       {std::string("a"), std::string("aa"), std::string("aaa"), std::string("aa"), std::string(), std::string("a"),
        longName, longName, longName + "y", "z" + longName, std::string("az")}) {
    lines += line + "\r\n";
  }
  write(reportFile, {lines});
  EXPECT_EQ(readWhole(files, reportFile), lines);
}

TEST_F(RecordsInMemoryTest, LinesEndAsForWhoReadsAReport) {
  write(reportFile, {"SYSTEM=1\rSYSTEM=2\n", "* x\rSYSTEM=3\r", "\n\rSYSTEM=4\r\n"});
  EXPECT_EQ(readWhole(files, reportFile), "SYSTEM=1\r\nSYSTEM=2\r\nSYSTEM=3\r\n\r\nSYSTEM=4\r\n");
}

TEST_F(RecordsInMemoryTest, AReportMayBeLongerThanABlock) {
  std::string lines;
  for (int i = 0; i < 40000; ++i) {
    lines += "SYSTEM=" + std::to_string(i * 7919 % 30011) + "\r\n";
  }
  write(reportFile, {lines});
  EXPECT_EQ(readWhole(files, reportFile), lines);
}

TEST_F(RecordsInMemoryTest, OtherFilesAreKeptAsTheyAre) {
  write("KivSystem1.TXT", {"* no comment\r\n", "x"});
  EXPECT_EQ(readWhole(files, "KivSystem1.TXT"), "* no comment\r\nx");
}

TEST_F(RecordsInMemoryTest, ADeletedReportIsGone) {
  host.addFile(reportFile, "* below\r\n");
  write(reportFile, {"SYSTEM=1\r\n"});
  EXPECT_TRUE(files.deleteFile(reportFile));
  EXPECT_EQ(readWhole(files, reportFile), std::nullopt);
  EXPECT_FALSE(files.deleteFile(reportFile));
  write(reportFile, {"SYSTEM=2\r\n"});
  EXPECT_EQ(readWhole(files, reportFile), "SYSTEM=2\r\n");
}

TEST_F(RecordsInMemoryTest, AReportThatIsWrittenAgainReplacesTheOldOne) {
  write(reportFile, {"SYSTEM=1\r\n"});
  LineReader old(files.openInput(reportFile));
  write(reportFile, {"SYSTEM=2\r\n"});
  EXPECT_EQ(old.next(), "SYSTEM=1") << "who has opened it reads on";
  EXPECT_EQ(readWhole(files, reportFile), "SYSTEM=2\r\n");
}

}  // namespace
}  // namespace kiv::test
