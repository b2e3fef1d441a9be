#include "platform/argument_text.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(ArgumentText, FollowsTheProgramsName) {
  EXPECT_EQ(argumentText("KivSystem.exe CALLEDBY=KIV,FUNCTION=MAIN"), "CALLEDBY=KIV,FUNCTION=MAIN");
  EXPECT_EQ(argumentText("\"C:\\My tools\\KivSystem.exe\" CALLEDBY=KIV"), "CALLEDBY=KIV");
  EXPECT_EQ(argumentText("C:\\\"My tools\"\\KivSystem.exe CALLEDBY=KIV"), "CALLEDBY=KIV") << "quoted in parts";
}

TEST(ArgumentText, IsEmptyWithoutArguments) {
  EXPECT_EQ(argumentText(""), "");
  EXPECT_EQ(argumentText("KivSystem.exe"), "");
  EXPECT_EQ(argumentText("\"C:\\My tools\\KivSystem.exe\""), "");
  EXPECT_EQ(argumentText("\"C:\\My tools\\KivSystem.exe"), "") << "a quote that is not closed";
  EXPECT_EQ(argumentText("KivSystem.exe \t "), "");
}

TEST(ArgumentText, BytesBeyondAsciiArePartOfTheName) {
  EXPECT_EQ(argumentText("C:\\F\xFCr Anna,FUNCTION=MAIN"), "Anna,FUNCTION=MAIN");
  EXPECT_EQ(argumentText("C:\\F\xFCrs\\KivSystem.exe CALLEDBY=KIV"), "CALLEDBY=KIV");
  EXPECT_EQ(argumentText("C:\\\x95\x5C\\\x83\x7C\\KivSystem.exe CALLEDBY=KIV"), "CALLEDBY=KIV")
      << "two-byte characters";
}

TEST(ArgumentText, BlanksAndQuotesOfTheArgumentsAreKept) {
  EXPECT_EQ(argumentText("K.exe  \t A  \"B C\" "), "A  \"B C\" ");
  EXPECT_EQ(argumentText(" A"), "A") << "a command line without a name";
}

}  // namespace
}  // namespace kiv::test
