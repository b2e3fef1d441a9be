#include "platform/console/printable.h"

#include <string>

#include <gtest/gtest.h>

#include "messages/conversion_messages.h"
#include "messages/page_messages.h"
#include "tests/posix/console_output.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

TEST(Printable, OrdinaryNamesKeepTheirBytes) {
  for (const std::string name : {"", "SYMPH001.MUS", "\\music\\Le nozze di Figaro\\", "Prélude 1.mus", "ÄÖÜ äöü ß",
                                 "\\n is a folder", "Чайковский", "交響曲", "\xF0\x9D\x84\x9E", "100 % \"x\" 'y'"}) {
    EXPECT_EQ(printable(name), name);
  }
}

TEST(Printable, ControlCharactersAreEscaped) {
  EXPECT_EQ(printable("a\r\nb\tc\x1B[31m\x7F"), "a\\r\\nb\\tc\\x1B[31m\\x7F");
  EXPECT_EQ(printable(std::string("a\0b", 3)), "a\\x00b");
}

TEST(Printable, ControlCharactersBeyondAsciiAreEscaped) {
  EXPECT_EQ(printable("\xC2\x80|\xC2\x9B|\xC2\x9F|\xC2\xA0"), "\\u0080|\\u009B|\\u009F|\xC2\xA0");
}

TEST(Printable, CharactersThatTurnTheDirectionOfWritingAreEscaped) {
  EXPECT_EQ(printable("\u061C\u200E\u200F"), "\\u061C\\u200E\\u200F");
  EXPECT_EQ(printable("\u202A\u202B\u202C\u202D\u202E"), "\\u202A\\u202B\\u202C\\u202D\\u202E");
  EXPECT_EQ(printable("\u2066\u2067\u2068\u2069"), "\\u2066\\u2067\\u2068\\u2069");
  EXPECT_EQ(printable("\u061B\u200D\u2010\u2027\u202F\u2070"), "\u061B\u200D\u2010\u2027\u202F\u2070");
}

TEST(Printable, CharactersThatCannotBeSeenAreEscaped) {
  EXPECT_EQ(printable("A\u00AD1|A\u200B1|A\u20601|A\u206A1|A\uFEFF1"),
            "A\\u00AD1|A\\u200B1|A\\u20601|A\\u206A1|A\\uFEFF1");
  EXPECT_EQ(printable("A\u180E1|A\uFFF91|A\U000E00411|A\U000E01EF1"),
            "A\\u180E1|A\\uFFF91|A\\U000E00411|A\\U000E01EF1");
  EXPECT_EQ(printable("A\u31641|A\u115F1|A\u28001|A\uFFA01"), "A\\u31641|A\\u115F1|A\\u28001|A\\uFFA01");
  EXPECT_EQ(printable("A\u200C\u200D1 \U0001F3BB"), "A\u200C\u200D1 \U0001F3BB");
}

TEST(Printable, LineEndsBeyondAsciiAreEscaped) {
  EXPECT_EQ(printable("a\u2028b\u2029c"), "a\\u2028b\\u2029c");
}

TEST(Printable, BytesThatAreNoTextAreEscaped) {
  EXPECT_EQ(printable("\xE4|\x9B|\xC3"), "\\xE4|\\x9B|\\xC3");
  EXPECT_EQ(printable("\xC0\x8A"), "\\xC0\\x8A");           // a line end in too many bytes
  EXPECT_EQ(printable("\xED\xA0\x80"), "\\xED\\xA0\\x80");  // half a character
}

TEST(Printable, LinesKeepTheirLineEndsOnly) {
  EXPECT_EQ(printableLines("a\x1B\r\nb\n\nc\rd\r\r\n"), "a\\x1B\r\nb\n\nc\\rd\\r\r\n");
  EXPECT_EQ(printableLines(""), "");
  EXPECT_EQ(printableLines("\r\nend"), "\r\nend");
}

TEST(ConsoleUser, ANameInAMessageGetsNoLineOfItsOwn) {
  const std::string folder = "\\a\r\nPROVED=YES\r\n\x1B[2J";
  EXPECT_EQ(throughAPipe([&](ConsoleUser& user) {
              user.show(messages::structuralError(folder + "\\A1.MUS", 3, folder));
              user.show(messages::created(2, folder + "\\WORK0001.MUS", folder + "\\WORK0002.MUS"));
              user.show(messages::fileExists(folder + "\\WORK0001.MUS"));
            }),
            "critical: Structural error in MUS file: \\a\\r\\nPROVED=YES\\r\\n\\x1B[2J\\A1.MUS\n"
            "  Try to recover with KivValid/KivRecover.\n"
            "  Current folder = \\a\\r\\nPROVED=YES\\r\\n\\x1B[2J\n"
            "  Item number = 3\n"
            "information: Created 2 files.\n"
            "  First is \\a\\r\\nPROVED=YES\\r\\n\\x1B[2J\\WORK0001.MUS\n"
            "  Last is \\a\\r\\nPROVED=YES\\r\\n\\x1B[2J\\WORK0002.MUS\n"
            "exclamation: File exists: \\a\\r\\nPROVED=YES\\r\\n\\x1B[2J\\WORK0001.MUS\n"
            "  \n"
            "  Overwrite?\n");
}

TEST(ConsoleUser, ALineFeedAloneIsNoLineEndOfAMessage) {
  EXPECT_EQ(throughAPipe([](ConsoleUser& user) { inform(user, "one\ntwo\rthree\r\nfour"); }),
            "information: one\\ntwo\\rthree\n  four\n");
}

TEST(ConsoleUser, TheMessageThatIsKeptHasTheNameAsItIs) {
  throughAPipe([](ConsoleUser& user) {
    inform(user, "a\x1B\nb");
    EXPECT_EQ(user.messages().front().message.text, "a\x1B\nb");
  });
}

TEST(ConsoleUser, ATextOnATerminalIsObeyedByNoTerminal) {
  const TemporaryFolder disk;
  disk.addFile("names.txt", "\\A\x1B]0;title\x07 1\r\nb\rc\n");
  EXPECT_EQ(onATerminal([&](ConsoleUser& user) { user.showText(disk.core("names.txt")); }),
            "\\A\\x1B]0;title\\x07 1\r\nb\\rc\n");
}

}  // namespace
}  // namespace kiv::test
