#include "verify/selected_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "verify/page_files.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

class SelectedFilesTest : public ::testing::Test {
 protected:
  SelectedFilesTest() {
    for (const char* name : {"C:\\M\\P1.MUS", "C:\\M\\P2.MUS", "C:\\N\\P3.MUS", "C:\\M\\WORK0001.MUS"}) {
      host.addFile(name, "");
    }
  }

  proof::SelectedFiles read(const std::string& names) {
    host.addFile("C:\\N.TXT", names);
    return proof::selectedFilesOf(host, host, "C:\\N.TXT");
  }
  /// "file: reason", or "" for a selection that can be analyzed.
  std::string failure(const std::string& names) {
    const auto failure = read(names).failure;
    return failure ? failure->file + ": " + failure->what : "";
  }

  FakeHost host;
};

TEST_F(SelectedFilesTest, AreTheLinesThatEndWithOne) {
  EXPECT_THAT(read("* two pages\r\n\r\n C:\\M\\P3.MUS 1\nc:\\m\\p1.mus 1  \rC:\\M\\P2.MUS 1").names,
              ElementsAre("C:\\M\\P1.MUS", "C:\\M\\P2.MUS"));
  EXPECT_EQ(failure("C:\\M\\P1.MUS 1\r\nC:\\M\\P2.MUS\r\n"), "");
}

TEST_F(SelectedFilesTest, MustBeInOneFolderAndReadable) {
  EXPECT_EQ(failure("C:\\M\\P1.MUS 1\r\nP2.MUS 1\r\n"), "C:\\N.TXT: has a line without a folder: P2.MUS 1");
  EXPECT_EQ(failure("C:\\M\\P1.MUS 1\r\nC:\\N\\P3.MUS 1\r\n"),
            "C:\\N.TXT: lists files of more than one folder: C:\\N\\P3.MUS 1");
  EXPECT_EQ(failure("C:\\M\\P1.MUS 1\r\nC:\\M\\P9.MUS 1\r\n"), "C:\\M\\P9.MUS: cannot be read");
  EXPECT_EQ(failure("C:\\\\M\\P1.MUS 1\r\n"), "C:\\\\M\\P1.MUS: cannot be read") << "two backslashes are refused";
}

TEST_F(SelectedFilesTest, MustBeThereAndNotBeginWithAResult) {
  EXPECT_EQ(failure("* nothing\r\n"), "C:\\N.TXT: lists no page files");
  EXPECT_EQ(failure("C:\\M\\WORK0001.MUS 1\r\nC:\\M\\P1.MUS 1\r\n"),
            "C:\\M\\WORK0001.MUS: has the name of a first result, which no first input can have");
  EXPECT_EQ(failure("C:\\M\\P1.MUS 1\r\nC:\\M\\WORK0001.MUS 1\r\n"), "");
}

/// The pages as "name,letters,files;"; the failure when there is one.
std::string pages(const std::vector<std::string>& names) {
  std::vector<std::string> inputs;
  for (const std::string& name : names) {
    inputs.push_back("C:\\M\\" + name);
  }
  FakeHost host;
  const proof::SelectedPages selected(host, inputs);
  std::string text = selected.failure() ? selected.failure()->what : "";
  for (std::size_t i = 0; i < selected.size(); ++i) {
    const proof::PageFiles page = selected.page(i);
    EXPECT_EQ(page.folder, "C:\\M\\");
    text += page.name + "," + page.letters + "," + std::to_string(page.files.size()) + ";";
  }
  return text;
}

TEST(PageFiles, WithALetterAfterTheNumberAreOnePage) {
  EXPECT_EQ(pages({"P1A.MUS", "P1B.MUS", "P2.MUS"}), "P1.MUS,AB,2;P2.MUS,,1;");
  EXPECT_EQ(pages({"P1B.MUS", "P2A.MUS", "P1A.MUS"}), "P1.MUS,BA,2;P2A.MUS,,1;");
  EXPECT_EQ(pages({"P1.MUS", "P1A.MUS", "P1AB.MUS"}), "P1.MUS,,1;P1A.MUS,,1;C:\\M\\P1AB.MUS,,1;");
}

TEST(PageFiles, HaveNamesWithANumber) {
  EXPECT_EQ(pages({"12AB034.MUS", "123.MUS", "A-B_C$7.MUS", "PAGE1.OLD.MUS", "N7", "12AB.MUS"}),
            "12AB034.MUS,,1;123.MUS,,1;A-B_C$7.MUS,,1;PAGE1.OLD.MUS,,1;N7,,1;C:\\M\\12AB.MUS,,1;");
  for (const char* name : {"ABC.MUS", "AB1CD2E.MUS", "PAGE 1.MUS", "12A-.MUS", "A-B.MUS", "A1-.MUS"}) {
    EXPECT_EQ(pages({name}), "has no name of a page file") << name;
  }
  for (const char* name : {".MUS", "AB-.MUS"}) {
    EXPECT_EQ(pages({name}), "has a name without a number") << name;
  }
}

}  // namespace
}  // namespace kiv::test
