#include "platform/console/shell_words.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(ShellWords, PlainNamesStayAsTheyAre) {
  EXPECT_EQ(fileWord("music/SYMPH-001_a.MUS"), "music/SYMPH-001_a.MUS");
  EXPECT_EQ(fileWord("50%@home,1+1=2.MUS"), "50%@home,1+1=2.MUS");
}

TEST(ShellWords, WhatAShellWouldChangeIsQuoted) {
  EXPECT_EQ(fileWord("my page.MUS"), "'my page.MUS'");
  EXPECT_EQ(fileWord("$(id).MUS"), "'$(id).MUS'");
  EXPECT_EQ(fileWord("a\\b.MUS"), "'a\\b.MUS'");
  EXPECT_EQ(fileWord("*.MUS"), "'*.MUS'");
}

TEST(ShellWords, AQuoteIsQuotedByItself) {
  EXPECT_EQ(fileWord("l'orfeo.MUS"), "'l'\\''orfeo.MUS'");
}

TEST(ShellWords, AFileIsNoOption) {
  EXPECT_EQ(fileWord("-x.MUS"), "./-x.MUS");
  EXPECT_EQ(shellWord("-x"), "'-x'");
}

TEST(ShellWords, NothingIsAWordOfItsOwn) {
  EXPECT_EQ(shellWord(""), "''");
}

}  // namespace
}  // namespace kiv::test
