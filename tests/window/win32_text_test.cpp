#include <array>

#include <gtest/gtest.h>

#include "platform/external_programs.h"
#include "platform/win32/handle.h"
#include "platform/win32/text.h"
#include "tests/window/system_host.h"

namespace kiv::test {
namespace {

/// A value in the user's profile, gone with the test.
class ProfileKey {
 public:
  ProfileKey(const char* key, const std::string& value) : key_(key) {
    EXPECT_TRUE(WriteProfileStringA("KIV", key, value.c_str()));
  }
  ProfileKey(const ProfileKey&) = delete;
  ProfileKey& operator=(const ProfileKey&) = delete;
  ~ProfileKey() { WriteProfileStringA("KIV", key_, nullptr); }

 private:
  const char* key_;
};

TEST(Win32Profile, KeyHasItsValue) {
  SystemHost host;
  const ProfileKey key("KIVTEST", "XP");
  EXPECT_EQ(GetProfileKey(host, "KIVTEST"), "XP");
  EXPECT_EQ(GetProfileKey(host, "kivtest"), "XP") << "profile keys ignore case";
}

TEST(Win32Profile, AbsentKeyIsEmpty) {
  SystemHost host;
  EXPECT_EQ(GetProfileKey(host, "KIVTESTABSENT"), "");
}

TEST(Win32Profile, LongValueIsCutAfter31Characters) {
  SystemHost host;
  const std::string value = "1234567890123456789012345678901234567890";
  const ProfileKey key("KIVTEST", value);
  EXPECT_EQ(GetProfileKey(host, "KIVTEST"), value.substr(0, 31));
}

TEST(Win32Profile, LongestValueIsWhole) {
  SystemHost host;
  const std::string value = "1234567890123456789012345678901";
  const ProfileKey key("KIVTEST", value);
  EXPECT_EQ(GetProfileKey(host, "KIVTEST"), value);
}

TEST(Win32Text, CapitalsAreThoseOfTheCodePage) {
  ASSERT_EQ(GetACP(), 1252U) << "these tests are for the code page of Western Europe";
  SystemHost host;
  EXPECT_EQ(host.upperCase("abc-xyz 1~$"), "ABC-XYZ 1~$");
  EXPECT_EQ(host.upperCase("\xE4\xF6\xFC\xE9\xE7"), "\xC4\xD6\xDC\xC9\xC7");
  EXPECT_EQ(host.upperCase("\xDF"), "\xDF");
  EXPECT_EQ(host.upperCase("\xF7"), "\xF7") << "the division symbol is no letter";
  EXPECT_EQ(host.upperCase(""), "");
  EXPECT_EQ(host.upperCase(std::string("a\0b", 3)), std::string("A\0B", 3));
}

TEST(Win32Text, BytesOfThisCodePageAreCharacters) {
  ASSERT_EQ(GetACP(), 1252U);
  SystemHost host;
  EXPECT_EQ(host.characterCount(""), 0U);
  EXPECT_EQ(host.characterCount("abc"), 3U);
  EXPECT_EQ(host.characterCount("\x81\x40\xE4\xFF"), 4U);
}

TEST(Win32Text, TextIsTurnedIntoUtf8) {
  ASSERT_EQ(GetACP(), 1252U);
  SystemHost host;
  EXPECT_EQ(host.toUtf8("Tr\xE4ume \x80"), "Tr\xC3\xA4ume \xE2\x82\xAC");
  EXPECT_EQ(host.toUtf8(""), "");
}

TEST(Win32Text, FailuresHaveTheSystemsWordsWithoutALineEnd) {
  const std::string words = systemMessage(ERROR_FILE_NOT_FOUND);
  EXPECT_GT(words.size(), 5U);
  EXPECT_EQ(words.find_first_of("\r\n"), std::string::npos);
  EXPECT_EQ(systemMessage(0x2000ABCD), "Error 0x2000ABCD") << "a number without words";
}

/// Puts the process's standard handles back as they were.
class StandardHandles {
 public:
  StandardHandles() {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      before_[i] = GetStdHandle(numbers[i]);
    }
  }
  StandardHandles(const StandardHandles&) = delete;
  StandardHandles& operator=(const StandardHandles&) = delete;
  ~StandardHandles() {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      SetStdHandle(numbers[i], before_[i]);
    }
  }

 private:
  static constexpr std::array<DWORD, 3> numbers = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
  std::array<HANDLE, 3> before_{};
};

/// A screen of a console that standard error is redirected to for as long as this lives.
class ConsoleScreen {
 public:
  ConsoleScreen() {
    if (!screen_.isOpen()) {
      FreeConsole();
      AllocConsole();
      screen_ = Handle(makeScreen());
    }
    SetStdHandle(STD_ERROR_HANDLE, screen_.get());
  }

  bool isOpen() const { return screen_.isOpen(); }
  std::wstring firstLine(DWORD length) const {
    std::wstring line(length, L'\0');
    DWORD got = 0;
    ReadConsoleOutputCharacterW(screen_.get(), line.data(), length, {0, 0}, &got);
    line.resize(got);
    return line;
  }

 private:
  static HANDLE makeScreen() {
    return CreateConsoleScreenBuffer(GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                     CONSOLE_TEXTMODE_BUFFER, nullptr);
  }

  StandardHandles before_;
  Handle screen_{makeScreen()};
};

TEST(Win32Text, ConsoleShowsTheCharactersOfTheCodePage) {
  ASSERT_EQ(GetACP(), 1252U);
  const ConsoleScreen console;
  ASSERT_TRUE(console.isOpen());
  EXPECT_TRUE(SystemHost::errorIsTerminal());
  SystemHost::writeError("Tr\xE4ume \x80\n");
  EXPECT_EQ(console.firstLine(10), L"Tr\u00E4ume \u20AC  ");
}

TEST(Win32Clock, ShowsTheLocalTime) {
  SystemHost host;
  const auto seconds = [](const SYSTEMTIME& time) {
    FILETIME ticks{};
    SystemTimeToFileTime(&time, &ticks);
    return (static_cast<ULONGLONG>(ticks.dwHighDateTime) << 32U | ticks.dwLowDateTime) / 10'000'000U;
  };
  SYSTEMTIME before{};
  SYSTEMTIME after{};
  GetLocalTime(&before);
  const LocalTime now = host.now();
  GetLocalTime(&after);
  SYSTEMTIME reported{};
  reported.wYear = static_cast<WORD>(now.year);
  reported.wMonth = static_cast<WORD>(now.month);
  reported.wDay = static_cast<WORD>(now.day);
  reported.wHour = static_cast<WORD>(now.hour);
  reported.wMinute = static_cast<WORD>(now.minute);
  reported.wSecond = static_cast<WORD>(now.second);
  EXPECT_LE(seconds(before), seconds(reported));
  EXPECT_LE(seconds(reported), seconds(after));
}

}  // namespace
}  // namespace kiv::test
