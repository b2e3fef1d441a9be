#include "verify/group_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"
#include "verify/input_pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string duo =
    "staff 2 at 0 instrument 101\nnote 2 at 5\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
const std::string solo = "staff 1 at 0 instrument 101\nnote 1 at 5\nbarline 1 at 0 spans 1\n";

/// Pages that are asked for by their staves, and the names of those that were loaded.
class InputPagesTest : public ::testing::Test {
 protected:
  InputPagesTest() {
    host.addFile("C:\\M\\A.MUS", page(duo));
    host.addFile("C:\\M\\B.MUS", page(solo));
  }

  FakeHost host;
  std::vector<std::string> loaded;
  proof::InputPages pages{[this](const std::string& name) {
    loaded.push_back(name);
    return proof::loadPage(host, name);
  }};
};

TEST_F(InputPagesTest, AStaffHasItsItemsInTheOrderOfTheFile) {
  const auto& items = pages.staff("C:\\M\\A.MUS", 2);
  ASSERT_THAT(items, SizeIs(2));
  EXPECT_EQ(items[0].number, 1);
  EXPECT_EQ(items[1].number, 2);
  EXPECT_THAT(pages.staff("C:\\M\\A.MUS", 7), IsEmpty());
  EXPECT_THAT(pages.staff("C:\\M\\NONE.MUS", 1), IsEmpty());
}

TEST_F(InputPagesTest, AStaffMayContinueAfterAnother) {
  host.addFile("C:\\M\\C.MUS",
               page("staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nnote 2 at 5\nnote 1 at 5\n"
                    "note 2 at 9\n"));
  const auto numbersOn = [this](float staff) {
    std::vector<int> numbers;
    for (const proof::PageItem& item : pages.staff("C:\\M\\C.MUS", staff)) {
      numbers.push_back(item.number);
    }
    return numbers;
  };
  EXPECT_THAT(numbersOn(2), ElementsAre(1, 3, 5));
  EXPECT_THAT(numbersOn(1), ElementsAre(2, 4));
  EXPECT_THAT(numbersOn(2), ElementsAre(1, 3, 5));
}

TEST_F(InputPagesTest, BothZerosAreOneStaff) {
  host.addFile("C:\\M\\C.MUS", page("note 0 at 5\nnote -0 at 7\nnote 0 at 9\n"));
  EXPECT_THAT(pages.staff("C:\\M\\C.MUS", 0), SizeIs(3));
  EXPECT_THAT(pages.staff("C:\\M\\C.MUS", -0.0F), SizeIs(3));
}

TEST_F(InputPagesTest, AFileIsLoadedAgainOnlyWhenItWasForgotten) {
  pages.staff("C:\\M\\A.MUS", 1);
  pages.staff("C:\\M\\A.MUS", 2);
  pages.staff("C:\\M\\B.MUS", 1);
  EXPECT_THAT(loaded, ElementsAre("C:\\M\\A.MUS", "C:\\M\\B.MUS"));
  pages.keepOnly({"C:\\M\\B.MUS", "C:\\M\\C.MUS"});
  pages.staff("C:\\M\\B.MUS", 1);
  pages.staff("C:\\M\\A.MUS", 1);
  EXPECT_THAT(loaded, ElementsAre("C:\\M\\A.MUS", "C:\\M\\B.MUS", "C:\\M\\A.MUS"));
}

TEST(GroupPages, AFileThatHasChangedSinceItWasLoadedIsNoted) {
  FakeHost host;
  const proof::Progress progress = [](std::size_t, std::size_t, std::string_view) {};
  proof::GroupPages pages(host, host, progress);
  host.addFile("C:\\M\\A.MUS", page(duo));
  pages.load("C:\\M\\A.MUS");
  pages.load("C:\\M\\A.MUS");
  EXPECT_THAT(pages.changed(), IsEmpty());
  host.addFile("C:\\M\\A.MUS", page(solo));
  pages.load("C:\\M\\A.MUS");
  EXPECT_THAT(pages.changed(), ElementsAre("C:\\M\\A.MUS"));
}

TEST(GroupPages, OfAProofAreReadTwiceInsteadOfKept) {
  ConvertedGroup group({{"DUO001.MUS", page(duo)}, {"DUO002.MUS", page(solo)}, {"DUO003.MUS", page(duo)}});
  const std::string result = ConvertedGroup::resultName(2);
  const int inputs = group.host.timesRead("C:\\M\\DUO002.MUS");
  const int results = group.host.timesRead(result);
  EXPECT_EQ(group.findings(), "");
  EXPECT_EQ(group.host.timesRead("C:\\M\\DUO002.MUS"), inputs + 3) << "first it is looked for";
  EXPECT_EQ(group.host.timesRead(result), results + 2);
}

TEST(GroupPages, AreComparedWithEachOtherWhenOneResultIsNotAsExpected) {
  ConvertedGroup group({{"DUO001.MUS", page(duo)}, {"DUO002.MUS", page(solo)}, {"DUO003.MUS", page(duo)}});
  const std::string first = group.result(1);
  group.replaceResult(1, group.result(2));
  group.replaceResult(2, first);
  EXPECT_NE(group.findings().find("which belongs in C:\\OUT\\WORK0002.MUS"), std::string::npos) << group.findings();
}

}  // namespace
}  // namespace kiv::test
