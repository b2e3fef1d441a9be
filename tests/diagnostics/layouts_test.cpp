#include "diagnostics/layouts.h"

#include <gtest/gtest.h>

#include "analysis/report.h"
#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

class LayoutsOf : public ::testing::Test, public DiagnosedRun {
 protected:
  Layouts find(Places places = Places::ofEverySystem) {
    run();
    return findLayouts(host, program.systems, *group, places).value();
  }

  const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
  const std::string bass = "note 1 at 5\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";
};

TEST_F(LayoutsOf, AConsistentPieceIsOneAndNoPageIsReadAgain) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", bass);
  run();
  const int before = host.timesRead("C:\\M\\X1.MUS");
  const Layouts layouts = findLayouts(host, program.systems, *group, Places::ofEverySystem).value();
  EXPECT_EQ(host.timesRead("C:\\M\\X1.MUS"), before);
  EXPECT_TRUE(layouts.isConsistent());
  ASSERT_EQ(layouts.classes.size(), 1U);
  EXPECT_EQ(layouts.classes[0].label, "A");
  EXPECT_EQ(layouts.classes[0].instruments, std::vector<std::int16_t>{102});
  EXPECT_EQ(layouts.classes[0].systems, (std::vector<std::uint32_t>{0, 1}));
}

TEST_F(LayoutsOf, NoSystemsHaveNone) {
  addPage("X1.MUS", "note 1 at 0\n");
  EXPECT_TRUE(find().classes.empty());
}

TEST_F(LayoutsOf, TheMostFrequentIsA) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", fluteAndBass);
  addPage("X3.MUS", fluteAndBass);
  const Layouts layouts = find();
  ASSERT_EQ(layouts.classes.size(), 2U);
  EXPECT_EQ(layouts.classes[0].instruments, (std::vector<std::int16_t>{101, 102}));
  EXPECT_EQ(layouts.classes[0].systems, (std::vector<std::uint32_t>{1, 2}));
  EXPECT_EQ(layouts.classes[1].label, "B");
  EXPECT_EQ(layouts.classes[1].deviations,
            (std::vector<Deviation>{{DeviationKind::missing, 101, 1, 0, std::nullopt, std::nullopt}}));
}

TEST_F(LayoutsOf, OfEquallyCommonOnesTheFirstIsA) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", fluteAndBass);
  const Layouts layouts = find();
  ASSERT_EQ(layouts.classes.size(), 2U);
  EXPECT_EQ(layouts.classes[0].instruments, std::vector<std::int16_t>{102});
  EXPECT_EQ(layouts.classes[1].deviations,
            (std::vector<Deviation>{{DeviationKind::extra, 101, 2, 1, 2, ItemPlace{1, 2}}}));
}

TEST_F(LayoutsOf, ADeviationNamesTheStaffOfItsFile) {
  addPage("X1.MUS", bass);
  addPage("X2A.MUS", "note 1 at 5\nstaff 1 at 0 instrument 101\n");
  addPage("X2B.MUS", bass);
  const Layouts layouts = find();
  ASSERT_EQ(layouts.classes.size(), 2U);
  EXPECT_EQ(layouts.classes[1].deviations,
            (std::vector<Deviation>{{DeviationKind::extra, 101, 2, 1, 1, ItemPlace{2, 18}}}));
  EXPECT_EQ(layouts.files[1], "C:\\M\\X2A.MUS");
  EXPECT_EQ(layouts.systems[1].firstFile, 1U);
  EXPECT_EQ(layouts.systems[1].lastFile, 2U);
}

TEST_F(LayoutsOf, OfEqualStavesEachIsFoundOnce) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS",
          "staff 2 at 9 instrument 102\nstaff 2 at 0 instrument 102\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans "
          "2\n");
  addPage("X3.MUS", bass);
  const Layouts layouts = find();
  ASSERT_EQ(layouts.classes.size(), 2U);
  EXPECT_EQ(layouts.classes[1].instruments, (std::vector<std::int16_t>{102, 102, 102}));
  ASSERT_EQ(layouts.classes[1].deviations.size(), 2U);
  EXPECT_EQ(layouts.classes[1].deviations[0].kind, DeviationKind::duplicate);
  EXPECT_EQ(layouts.classes[1].deviations[0].place->item, 1) << "the one further right comes second";
  EXPECT_EQ(layouts.classes[1].deviations[1].place->item, 3);
}

TEST_F(LayoutsOf, OfFirstSystemsOnlyThoseAreLookedUp) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", bass);
  addPage("X3.MUS", bass);
  addPage("X4.MUS", fluteAndBass);
  addPage("X5.MUS", fluteAndBass);
  run();
  const int before = host.timesRead("C:\\M\\X5.MUS");
  const Layouts layouts = findLayouts(host, program.systems, *group, Places::ofFirstSystems).value();
  EXPECT_EQ(layouts.classes[1].deviations.size(), 1U);
  EXPECT_EQ(host.timesRead("C:\\M\\X5.MUS"), before);
}

TEST_F(LayoutsOf, ATextLeftOfAStaffIsItsName) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS",
          "staff 2 at 10 instrument 101\ntext 2 at 12 \"Adagio\"\ntext 2 at 1 \"12\"\ntext 2 at 2 \"Flute 2\"\n"
          "text 2 at 2 \"other\"\nstaff 1 at 10 instrument 102\nbarline 1 at 10 spans 2\n");
  const Layouts layouts = find();
  EXPECT_EQ(layouts.names, (std::map<std::int16_t, std::string>{{101, "Flute 2"}}));
}

TEST_F(LayoutsOf, NoPageIsReadAgainForPlacesAndNames) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", "staff 2 at 10 instrument 101\ntext 2 at 1 \"Flute\"\n" + bass);
  run();
  const int before = host.timesRead("C:\\M\\X2.MUS");
  const Layouts layouts = findLayouts(host, program.systems, *group, Places::ofEverySystem).value();
  EXPECT_EQ(layouts.classes.size(), 2U);
  EXPECT_EQ(host.timesRead("C:\\M\\X2.MUS"), before);
}

TEST_F(LayoutsOf, TheReportIsNotReadForThem) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", fluteAndBass);
  run();
  host.deleteFile(reportFile);
  EXPECT_EQ(findLayouts(host, program.systems, *group, Places::ofEverySystem).value().classes.size(), 2U);
}

TEST_F(LayoutsOf, ATableOfAnotherReportHasNone) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", fluteAndBass);
  run();
  program.systems.systems.push_back(program.systems.systems.front());
  EXPECT_FALSE(findLayouts(host, program.systems, *group, Places::ofEverySystem).has_value());
}

TEST_F(LayoutsOf, LabelsContinueAfterZ) {
  for (int i = 1; i <= 28; ++i) {
    addPage("X" + std::to_string(i) + ".MUS", "staff 1 at 0 instrument " + std::to_string(100 + i) + "\n");
  }
  const Layouts layouts = find();
  ASSERT_EQ(layouts.classes.size(), 28U);
  EXPECT_EQ(layouts.classes[25].label, "Z");
  EXPECT_EQ(layouts.classes[26].label, "AA");
  EXPECT_EQ(layouts.classes[27].label, "AB");
}

}  // namespace
}  // namespace kiv::test
