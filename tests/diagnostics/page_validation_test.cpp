#include "diagnostics/page_validation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ValidatePages : public ::testing::Test, public DiagnosedRun {
 protected:
  PageValidation validate() {
    host.addFile("C:\\N.TXT", namesFile);
    return validatePages(host, "C:\\N.TXT");
  }
  static std::vector<std::string> filesOf(const PageValidation& validation) {
    std::vector<std::string> files;
    for (const SkippedPage& page : validation.skipped) {
      files.push_back(page.message.location.file);
    }
    return files;
  }

  const std::string valid = "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n";
};

TEST_F(ValidatePages, ValidPagesStayAsTheyAreListed) {
  namesFile = "* a comment\r\n\r\n";
  addPage("X1.MUS", valid);
  addPage("X2A.MUS", valid);
  addPage("X2B.MUS", valid);
  const PageValidation validation = validate();
  EXPECT_EQ(validation.names, namesFile);
  EXPECT_EQ(validation.pages, 2U);
  EXPECT_THAT(validation.skipped, IsEmpty());
}

TEST_F(ValidatePages, NothingIsWrittenDeletedOrShown) {
  addPage("X1.MUS", "words 99\n");
  listFile("X2.MUS");
  validate();
  EXPECT_THAT(host.messages, IsEmpty());
  EXPECT_THAT(host.calls, IsEmpty());
  EXPECT_EQ(host.file("C:\\N.TXT"), namesFile);
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystemLine.txt"));
}

TEST_F(ValidatePages, EveryInvalidPageIsNamedWithItsMessage) {
  addPage("X1.MUS", valid);
  addPage("X2.MUS", "words 99\n");
  addPage("NO-.MUS", valid);
  listFile("X4.MUS");
  addPage("X;5.MUS", valid);
  addPage("X6.MUS", "staff 1 at 0 instrument 40000\n");
  addPage("X7.MUS", valid);
  const PageValidation validation = validate();
  EXPECT_EQ(validation.names, "C:\\M\\X1.MUS 1\r\nC:\\M\\X7.MUS 1\r\n");
  EXPECT_EQ(validation.pages, 2U);
  ASSERT_THAT(filesOf(validation),
              ElementsAre("C:\\M\\NO-.MUS", "C:\\M\\X4.MUS", "C:\\M\\X;5.MUS", "C:\\M\\X2.MUS", "C:\\M\\X6.MUS"));
  EXPECT_THAT(validation.skipped[0].message.text, StartsWith("Filename has no numeric part."));
  EXPECT_EQ(validation.skipped[1].message.text,
            "Name in Names file [C:\\M\\X4.MUS] refers to non-existing or unaccessable file");
  EXPECT_THAT(validation.skipped[2].message.text, StartsWith("File naming problem: C:\\M\\X;5.MUS\r\n"));
  EXPECT_THAT(validation.skipped[3].message.text, StartsWith("Structural error in MUS file: C:\\M\\X2.MUS\r\n"));
  EXPECT_THAT(validation.skipped[4].message.text, StartsWith("Run-time error: Overflow\r\nSYSTEM=1,INSTRID=40000,"));
}

TEST_F(ValidatePages, APageIsSkippedWithAllItsFiles) {
  addPage("X1A.MUS", valid);
  addPage("X1B.MUS", "words 99\n");
  addPage("X2.MUS", valid);
  const PageValidation validation = validate();
  EXPECT_EQ(validation.names, "C:\\M\\X2.MUS 1\r\n");
  ASSERT_EQ(validation.skipped.size(), 1U);
  EXPECT_THAT(validation.skipped[0].files, ElementsAre("C:\\M\\X1B.MUS", "C:\\M\\X1A.MUS"));
  EXPECT_EQ(validation.skipped[0].message.location.file, "C:\\M\\X1B.MUS");
}

TEST_F(ValidatePages, OtherFoldersAreInvalidNamesAndTheFirstValidOneDecides) {
  namesFile = "NOFOLDER1.MUS 1\r\nC:\\M\\GONE1.MUS 1\r\n";
  addPage("X1.MUS", valid);
  host.addFile("C:\\OTHER\\X2.MUS", page(valid));
  namesFile += "C:\\OTHER\\X2.MUS 1\r\n";
  const PageValidation validation = validate();
  EXPECT_THAT(filesOf(validation), ElementsAre("NOFOLDER1.MUS", "C:\\M\\GONE1.MUS", "C:\\OTHER\\X2.MUS"));
  EXPECT_EQ(validation.names, "C:\\M\\X1.MUS 1\r\n");
}

TEST_F(ValidatePages, EveryPageIsReadOnce) {
  for (int i = 1; i <= 20; ++i) {
    addPage("X" + std::to_string(i) + ".MUS", i % 2 == 0 ? valid : "words 99\n");
  }
  validate();
  // It is opened to see whether it exists: for its name, and before it is read; and then it is read.
  EXPECT_LE(host.timesRead("C:\\M\\X20.MUS"), 3);
  EXPECT_LE(host.timesRead("C:\\M\\X19.MUS"), 3);
}

TEST_F(ValidatePages, ValidPagesAreAnalyzed) {
  addPage("X1.MUS", "staff 2 at 0 instrument 1\n");
  addPage("X2.MUS", "words 99\n");
  addPage("X3.MUS", "staff 1 at 0 instrument 1\n");
  namesFile = validate().names;
  run();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(program.names.nameCount, 2);
}

TEST_F(ValidatePages, NoNamesFileIsNoPages) {
  const PageValidation validation = validatePages(host, "C:\\NONE.TXT");
  EXPECT_EQ(validation.pages, 0U);
  EXPECT_THAT(validation.skipped, IsEmpty());
}

}  // namespace
}  // namespace kiv::test
