#include "tests/repair/recovery_figures.h"

#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// Of each combination of damage and style of a page, as many pages.
std::map<DamageKind, RecoveryFigures> figuresOfSamples() {
  constexpr std::uint32_t pages = 2250;
  std::map<DamageKind, RecoveryFigures> figures;
  for (std::uint32_t number = 100000; number < 100000 + pages; ++number) {
    const DamagedSample sample = sampleOf(number);
    figures[sample.kind].add(figuresOf(sample.page, repair::recover(sample.page.bytes())));
  }
  return figures;
}

DamagedPage somePage() {
  RandomGenerator random(1);
  return DamagedPage(randomPage(random, PageStyle::score, 20));
}

TEST(RecoveryFigures, OfDamagesThatMoveNothingNearlyAllItemsComeBackAndHardlyAnyPageHasAnInventedOne) {
  RecoveryFigures all;
  for (const auto& [kind, figures] : figuresOfSamples()) {
    if (kind == DamageKind::removed || kind == DamageKind::several) {
      EXPECT_GE(figures.itemsBack(), 99) << static_cast<int>(kind);
      EXPECT_GE(figures.pagesWithoutInvented(), 90) << static_cast<int>(kind);
    } else {
      EXPECT_GE(figures.itemsBack(), 99) << static_cast<int>(kind);
      all.add(figures);
    }
  }
  EXPECT_GT(all.pages, 1000U);
  EXPECT_GE(all.itemsBack(), 99.5);
  EXPECT_GE(all.pagesWithoutInvented(), 99.9);
}

/// The page of the bundled example with that name.
std::string examplePage(const std::string& name) {
  std::ifstream file(std::string(EXAMPLE_FOLDER) + "/" + name + ".txt");
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_FALSE(text.str().empty()) << name;
  return page(text.str());
}

TEST(RecoveryFigures, OfTheExamplePagesWithOneDamageNoItemIsInventedAndNearlyAllComeBack) {
  RecoveryFigures all;
  for (const char* name : {"SYMPH001", "SYMPH002", "SYMPH003A", "SYMPH003B", "SYMPH004", "SYMPH005"}) {
    const std::string whole = examplePage(name);
    for (std::uint32_t number = 0; number < 200; ++number) {
      RandomGenerator random(number);
      DamagedPage damaged(whole);
      damage(damaged, damageKinds[number % 5], random);
      all.add(figuresOf(damaged, repair::recover(damaged.bytes())));
    }
  }
  EXPECT_GT(all.pages, 800U);
  EXPECT_GE(all.itemsBack(), 99);
  EXPECT_EQ(all.inventing, 0U);
}

TEST(RecoveryFigures, AnInventedItemAndAMissingOneAreCounted) {
  const DamagedPage page = somePage();
  repair::Recovery recovery = repair::recover(page.bytes());
  recovery.isWhole = false;
  EXPECT_EQ(figuresOf(page, recovery).itemsBack(), 100);
  EXPECT_EQ(figuresOf(page, recovery).invented, 0U);
  recovery.items[1].bytes.end -= sizeof(float);
  EXPECT_EQ(figuresOf(page, recovery).back + 1, recovery.items.size());
  EXPECT_EQ(figuresOf(page, recovery).invented, 1U);
}

TEST(RecoveryFigures, AnItemWithAnotherValueCountsNeitherWay) {
  DamagedPage page = somePage();
  const std::size_t offset = itemOffsets(page.original())[3];
  repair::Recovery recovery = repair::recover(page.bytes());
  recovery.isWhole = false;
  page.overwrite(offset + 3 * sizeof(float), "\x01");
  const RecoveryFigures figures = figuresOf(page, recovery);
  EXPECT_EQ(figures.undamaged + 1, recovery.items.size());
  EXPECT_EQ(figures.back, figures.undamaged);
  EXPECT_EQ(figures.invented, 0U);
}

}  // namespace
}  // namespace kiv::test
