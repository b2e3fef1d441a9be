#include "input/file_names.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

struct Parts {
  std::string name;
  std::string number;
  std::string page;
  std::string suffix;

  bool operator==(const Parts&) const = default;
};

void PrintTo(const Parts& parts, std::ostream* out) {
  *out << "[" << parts.name << "][" << parts.number << "][" << parts.page << "][" << parts.suffix << "]";
}

Parts partsOf(const std::string& path) {
  FakeHost host;
  return {extractPartName(host, path), extractPartNumb(host, path), extractPartPage(host, path),
          extractPartSuff(host, path)};
}

int groupsIn(const std::string& path) {
  FakeHost host;
  return IsGroupOfDigits(host, path);
}

// The naming convention read one character at a time: the reference that the functions are compared with.
namespace reference {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}

std::string pathFree(std::string s) {
  s = FakeHost().upperCase(s);
  while (s.find('\\') != std::string::npos) {
    s.erase(0, 1);
  }
  return s;
}

std::string stem(const std::string& path) {
  std::string s = pathFree(path);
  while (s.find('.') != std::string::npos) {
    s.pop_back();
  }
  return s;
}

int groups(const std::string& path) {
  std::string s = pathFree(path);
  s.erase(0, 1);
  while (!s.empty() && isDigit(s.front())) {
    s.erase(0, 1);
  }
  while (!s.empty() && !isDigit(s.front())) {
    s.erase(0, 1);
  }
  return s.empty() ? 1 : 2;
}

std::string name(const std::string& path) {
  std::string s = stem(path);
  std::string result;
  const auto move = [&] {
    result += s.front();
    s.erase(0, 1);
  };
  if (!s.empty() && isDigit(s.front()) && groups(s) == 2) {
    while (!s.empty() && isDigit(s.front())) {
      move();
    }
  }
  while (!s.empty() && (isLetter(s.front()) || s.front() == '-' || s.front() == '$' || s.front() == '_')) {
    move();
  }
  return result;
}

std::string removeFromEnd(std::string& s, bool (*test)(char)) {
  std::string result;
  while (!s.empty() && test(s.back())) {
    result.insert(0, 1, s.back());
    s.pop_back();
  }
  return result;
}

std::string number(const std::string& path) {
  std::string s = stem(path);
  removeFromEnd(s, isLetter);
  return removeFromEnd(s, isDigit);
}

std::string page(const std::string& path) {
  std::string s = stem(path);
  return removeFromEnd(s, isLetter);
}

std::string suffix(const std::string& path) {
  std::string s = pathFree(path);
  while (!s.empty() && s.front() != '.') {
    s.erase(0, 1);
  }
  return s;
}

}  // namespace reference

TEST(FileNames, KnownNames) {
  const std::pair<const char*, Parts> names[] = {
      {"C:\\M\\abc012b.mus", {"ABC", "012", "B", ".MUS"}},     {"C:\\M\\ABC012.MUS", {"ABC", "012", "", ".MUS"}},
      {"C:\\M\\12AB034.MUS", {"12AB", "034", "", ".MUS"}},     {"C:\\M\\123.MUS", {"", "123", "", ".MUS"}},
      {"C:\\M\\A-B_C$7.MUS", {"A-B_C$", "7", "", ".MUS"}},     {"C:\\M\\AB1CD2E.MUS", {"AB", "2", "E", ".MUS"}},
      {"C:\\M\\ABC.MUS", {"ABC", "", "ABC", ".MUS"}},          {"C:\\M\\ABC12XY.MUS", {"ABC", "12", "XY", ".MUS"}},
      {"C:\\M\\PAGE1.OLD.MUS", {"PAGE", "1", "", ".OLD.MUS"}}, {"C:\\M\\PAGE 1.MUS", {"PAGE", "1", "", ".MUS"}},
      {"C:\\M\\NOSUFFIX7", {"NOSUFFIX", "7", "", ""}},         {"C:\\M\\ZA9089Z.MUS", {"ZA", "9089", "Z", ".MUS"}},
  };
  for (const auto& [path, parts] : names) {
    EXPECT_EQ(partsOf(path), parts) << path;
  }
}

TEST(FileNames, PartsOfNothingAreEmpty) {
  const Parts nothing;
  EXPECT_EQ(partsOf(""), nothing);
  EXPECT_EQ(partsOf("C:\\M\\"), nothing);
  EXPECT_EQ(partsOf("C:\\M1\\.MUS"), (Parts{"", "", "", ".MUS"}));
}

TEST(FileNames, LowerCaseIsRaisedInEveryPart) {
  EXPECT_EQ(partsOf("c:\\m\\xyz12c.mus"), (Parts{"XYZ", "12", "C", ".MUS"}));
}

TEST(FileNames, TheFolderHasNoPart) {
  EXPECT_EQ(partsOf("C:\\A1B2.D\\XY3.MUS"), (Parts{"XY", "3", "", ".MUS"}));
}

TEST(FileNames, AccentedLettersAreNoLetters) {
  EXPECT_EQ(partsOf("C:\\M\\AB\xC4"
                    "C7.MUS"),
            (Parts{"AB", "7", "", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\AB\xE4"
                    "C7.MUS"),
            (Parts{"AB", "7", "", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\AB7\xC9.MUS"), (Parts{"AB", "", "", ".MUS"}));
}

TEST(FileNames, AccentsInTheSuffixAreUpperCased) {
  EXPECT_EQ(partsOf("A7.m\xFCs").suffix, ".M\xDCS");
}

TEST(FileNames, BlanksEndNameAndNumber) {
  EXPECT_EQ(partsOf("C:\\M\\AB C7.MUS"), (Parts{"AB", "7", "", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\ AB7.MUS"), (Parts{"", "7", "", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\AB7 .MUS"), (Parts{"AB", "", "", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\AB7 B.MUS"), (Parts{"AB", "", "B", ".MUS"}));
  EXPECT_EQ(partsOf("C:\\M\\AB 7 8.M S"), (Parts{"AB", "8", "", ".M S"}));
}

TEST(FileNames, ALeadingGroupOfDigitsIsOfTheNameOnlyBeforeAnotherGroup) {
  EXPECT_EQ(partsOf("12AB34.MUS").name, "12AB");
  EXPECT_EQ(partsOf("12AB.MUS").name, "");
  EXPECT_EQ(partsOf("1.MUS2").name, "") << "digits after the period make no group of the name";
  EXPECT_EQ(partsOf("12 34.MUS").name, "12");
}

TEST(FileNames, TheNameHoldsNoDigitAfterItsFirstLetter) {
  EXPECT_EQ(partsOf("C:\\M\\AB1CD2E.MUS").name, "AB");
  EXPECT_EQ(partsOf("C:\\M\\1A2B3.MUS").name, "1A");
}

TEST(IsGroupOfDigits, KnownTexts) {
  EXPECT_EQ(groupsIn("5X"), 1);
  EXPECT_EQ(groupsIn("5X5"), 2);
  EXPECT_EQ(groupsIn("X5"), 1);
  EXPECT_EQ(groupsIn("X5Y6"), 2);
  EXPECT_EQ(groupsIn(""), 1);
  EXPECT_EQ(groupsIn("5"), 1);
  EXPECT_EQ(groupsIn("XY5"), 2);
}

TEST(IsGroupOfDigits, LooksAfterThePeriodButNotIntoTheFolder) {
  EXPECT_EQ(groupsIn("5.MU5"), 2);
  EXPECT_EQ(groupsIn("C:\\X5Y6\\5.MUS"), 1);
}

TEST(WithoutPath, GivesWhatFollowsTheLastBackslash) {
  FakeHost host;
  EXPECT_EQ(withoutPath(host, "C:\\A\\B.MUS"), "B.MUS");
  EXPECT_EQ(withoutPath(host, "C:\\A\\B\\"), "");
  EXPECT_EQ(withoutPath(host, "B.MUS"), "B.MUS");
  EXPECT_EQ(withoutPath(host, ""), "");
  EXPECT_EQ(withoutPath(host, "\\"), "");
}

TEST(WithoutPath, ChangesNoLetter) {
  FakeHost host;
  EXPECT_EQ(withoutPath(host, "c:\\a\\b \xE4.mus"), "b \xE4.mus");
}

TEST(JustPath, GivesWhatEndsWithTheLastBackslash) {
  FakeHost host;
  EXPECT_EQ(justPath(host, "C:\\A\\B.MUS"), "C:\\A\\");
  EXPECT_EQ(justPath(host, "C:\\A\\B\\"), "C:\\A\\B\\");
  EXPECT_EQ(justPath(host, "\\B"), "\\");
  EXPECT_EQ(justPath(host, "c:\\a \xE4\\b.mus"), "c:\\a \xE4\\");
}

// The second byte of some two-byte characters is that of a backslash.
TEST(FileNames, SecondByteOfACharacterIsNoBackslash) {
  FakeHost host;
  host.leadBytes = {'\x95'};
  const std::string path =
      "C:\\M\x95\x5C\\A\x95\x5C"
      "7B.MUS";
  EXPECT_EQ(withoutPath(host, path),
            "A\x95\x5C"
            "7B.MUS");
  EXPECT_EQ(justPath(host, path), "C:\\M\x95\x5C\\");
  EXPECT_EQ(extractPartName(host, path), "A");
}

TEST(JustPath, TogetherWithTheRestItIsThePath) {
  FakeHost host;
  for (const std::string path : {"C:\\A\\B.MUS", "C:\\A\\", "\\", "\\\\S\\T\\U V.W"}) {
    EXPECT_EQ(justPath(host, path) + withoutPath(host, path), path);
  }
}

TEST(FileNames, EveryShortTextGivesWhatTheReferenceGives) {
  const std::string characters = "Az09.\\ -\xE4";
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < 5; ++i) {
    for (const char character : characters) {
      texts.push_back(texts[i] + character);
    }
  }
  for (const std::string& text : texts) {
    const Parts expected = {reference::name(text), reference::number(text), reference::page(text),
                            reference::suffix(text)};
    ASSERT_EQ(partsOf(text), expected) << text;
    ASSERT_EQ(groupsIn(text), reference::groups(text)) << text;
  }
}

}  // namespace
}  // namespace kiv::test
