#include "apps/companions/natural_order.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Paths = std::vector<std::wstring>;

/// The paths, given in their order, are in no other one. Every pair is asked both ways.
void expectOrder(const Paths& paths) {
  for (std::size_t i = 0; i < paths.size(); ++i) {
    for (std::size_t j = 0; j < paths.size(); ++j) {
      EXPECT_EQ(comesBefore(paths[i], paths[j]), i < j) << "entries " << i << " and " << j;
    }
  }
}

TEST(NaturalOrder, DigitsCompareAsNumbers) {
  expectOrder({L"PAGE1.MUS", L"PAGE2.MUS", L"PAGE10.MUS", L"PAGE11.MUS", L"PAGE100.MUS"});
  expectOrder({L"2 X 3", L"2 X 10", L"10 X 2"});
}

TEST(NaturalOrder, PageLettersFollowTheNumber) {
  expectOrder({L"PAGE2.MUS", L"PAGE2A.MUS", L"PAGE2B.MUS", L"PAGE10.MUS", L"PAGE10A.MUS"});
}

TEST(NaturalOrder, LeadingZerosDecideLast) {
  expectOrder({L"P001.MUS", L"P01.MUS", L"P1.MUS", L"P01A.MUS", L"P1A.MUS", L"P002.MUS", L"P2.MUS"});
}

TEST(NaturalOrder, NumbersMayBeOfAnyLength) {
  expectOrder({L"P99999999999999999998", L"P99999999999999999999", L"P100000000000000000000"});
}

TEST(NaturalOrder, ShorterNameComesFirst) {
  expectOrder({L"", L"PAGE", L"PAGE 1", L"PAGE1", L"PAGES"});
  expectOrder({L"PAGE.MUS", L"PAGE 1.MUS", L"PAGE-1.MUS", L"PAGE1.MUS"});
}

TEST(NaturalOrder, SuffixDecidesAfterTheName) {
  expectOrder({L"PAGE1.A", L"PAGE1.MUS", L"PAGE1.MUS2", L"PAGE1.MUS10", L"PAGE2.A"});
}

TEST(NaturalOrder, FolderDecidesBeforeTheName) {
  expectOrder({L"C:\\M 2\\P2.MUS", L"C:\\M 10\\P1.MUS", L"C:\\M.X\\P1", L"D:\\P0"});
}

}  // namespace
}  // namespace kiv::test
