#include <gtest/gtest.h>

#include "mus/page_walker.h"
#include "pagetext/page_text.h"
#include "tests/mus/page_bytes.h"
#include "tests/reference/page_listing.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {
namespace {

using reference::listRead;
using reference::listWalked;
using test::ExactBytes;
using test::page;
using test::RandomGenerator;

/// Whatever the bytes are: the walk gives what the reference reader gives.
void expectReferenceReading(const ExactBytes& file) {
  ASSERT_EQ(listWalked(file.view()), listRead(file.view())) << test::hex(file.view());
}

/// The same, and the page text gives the bytes back.
void expectSafe(const ExactBytes& file) {
  ASSERT_NO_FATAL_FAILURE(expectReferenceReading(file));
  const std::string text = dumpPage(file.view());
  const auto built = buildPage(text);
  ASSERT_TRUE(std::holds_alternative<std::string>(built)) << text << std::get<PageTextError>(built).reason;
  ASSERT_EQ(test::hex(std::get<std::string>(built)), test::hex(file.view())) << text;
}

struct NamedPage {
  const char* name;
  const char* text;
  std::size_t trailerBytes = 24;
};

const NamedPage pages[] = {
    {"empty page", ""},
    {"staves",
     "staff 1 at 0 lines 5 instrument 3\n"
     "staff 2 at 0 lines 5 instrument 4 p20 1\n"},
    {"every type that has a word",
     "staff 1 at 0 size 2 lines 5 instrument 3\n"
     "clef 1 at 3 height 1 kind 2\n"
     "keysignature 1 at 8 key 2 type 1\n"
     "timesignature 1 at 12 upper 3 lower 4\n"
     "note 1 at 20 height 5 duration 1\n"
     "rest 1 at 30 kind 1 form 0 duration 0.5 cue 7\n"
     "barline 1 at 50 spans 1 kind 1\n"
     "shorttext 1 at 60 \"mf\"\n"
     "text 1 at 65 p13 4 \"Allegro con brio\"\n"
     "countedtext 1 at 70 \"Vivace\"\n"},
    {"types with no word, odd lengths",
     "item 1.5 1 3 length 2.51\n"
     "item 7 2 length 2.5\n"
     "item 4 1 50\n"},
    {"trailer of five words",
     "note 1 at 20\n"
     "words 9\n"
     "bytes 00 00 00 00 07 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\n",
     20},
};

/// The status that the walk ends with.
ReadStatus endOf(std::string_view file) {
  PageWalker walker(file);
  ReadStatus status = walker.findItem();
  while (status == ReadStatus::itemRead) {
    status = walker.findItem();
  }
  return status;
}

TEST(DamagedPage, CutAnywhereBeforeItsTrailerIsAStructuralErrorAndWithinItIsNone) {
  for (const NamedPage& named : pages) {
    const std::string whole = page(named.text);
    ASSERT_EQ(endOf(whole), ReadStatus::endOfItems) << named.name;
    const std::size_t items = whole.size() - named.trailerBytes;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
      const ExactBytes cut(std::string_view(whole).substr(0, size));
      EXPECT_EQ(endOf(cut.view()), size < items ? ReadStatus::structuralError : ReadStatus::endOfItems)
          << named.name << " cut to " << size << " of " << whole.size() << " bytes";
      ASSERT_NO_FATAL_FAILURE(expectSafe(cut)) << named.name << " cut to " << size << " bytes";
    }
  }
}

TEST(DamagedPage, WithAnyOneByteChangedToAnyValueIsReadAsTheReferenceReaderReadsIt) {
  const std::string whole = page(
      "staff 1 at 0 lines 5 instrument 3\n"
      "shorttext 1 at 60 \"mf\"\n"
      "text 1 at 65 p13 4 \"Allegro\"\n"
      "countedtext 1 at 70 \"Vivo\"\n"
      "note 1 at 80 duration 1\n");
  ExactBytes file(whole);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    const int original = static_cast<unsigned char>(whole[at]);
    for (int change = 1; change < 256; ++change) {
      file.set(at, original ^ change);
      ASSERT_NO_FATAL_FAILURE(expectReferenceReading(file)) << "byte " << at << " of " << original << " by " << change;
    }
    file.set(at, original);
  }
}

TEST(DamagedPage, WithAnyOneBitChangedSurvivesItsPageText) {
  const std::string whole = page(pages[2].text);
  ExactBytes file(whole);
  for (std::size_t at = 0; at < whole.size(); ++at) {
    const int original = static_cast<unsigned char>(whole[at]);
    for (int bit = 1; bit < 256; bit *= 2) {
      file.set(at, original ^ bit);
      ASSERT_NO_FATAL_FAILURE(expectSafe(file)) << "byte " << at << " of " << original << " by " << bit;
    }
    file.set(at, original);
  }
}

/// A word at the edge of what a reader accepts.
std::string oddWord(RandomGenerator& random) {
  constexpr std::uint32_t bits[] = {0x00000000, 0x80000000, 0x3F800000, 0x3FC00000, 0x40000000, 0x40200000,
                                    0x40400000, 0x41300000, 0x41600000, 0x41700000, 0x41800000, 0x41A00000,
                                    0x41A80000, 0x46FFFE00, 0x47000000, 0x7F800000, 0x7FC00001, 0xFF800001,
                                    0x20202020, 0x00002020, 0xBECCCCCD, 0x4F000000, 0x00000001};
  return test::wordOfBits(bits[random.below(std::size(bits))]);
}

TEST(DamagedPage, OfOddWordsIsReadAsTheReferenceReaderReadsIt) {
  RandomGenerator random(1);
  for (int round = 0; round < 3000; ++round) {
    const std::uint32_t count = random.below(60);
    std::string file = test::header(static_cast<int>(random.below(70)));
    for (std::uint32_t n = 0; n < count; ++n) {
      file += oddWord(random);
    }
    file.resize(file.size() - random.below(3));
    ASSERT_NO_FATAL_FAILURE(expectSafe(ExactBytes(file))) << "round " << round;
  }
}

TEST(DamagedPage, OfItemsBegunWellIsReadAsTheReferenceReaderReadsIt) {
  RandomGenerator random(2);
  for (int round = 0; round < 3000; ++round) {
    std::string items;
    for (std::uint32_t n = random.below(6); n > 0; --n) {
      constexpr float types[] = {1, 4, 8, 11, 15, 16, 18, 1.5F};
      const std::uint32_t length = 2 + random.below(22);
      items += test::words({static_cast<float>(length) + (random.oneIn(4) ? 0.5F : 0.0F)});
      items += test::words({types[random.below(std::size(types))]});
      for (std::uint32_t p = 2; p <= length; ++p) {
        items += oddWord(random);
      }
    }
    ASSERT_NO_FATAL_FAILURE(expectSafe(ExactBytes(test::pageOf(items)))) << "round " << round;
  }
}

TEST(DamagedPage, OfRandomBytesIsReadAsTheReferenceReaderReadsIt) {
  RandomGenerator random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string file(random.below(120), '\0');
    for (char& byte : file) {
      byte = static_cast<char>(random.below(256));
    }
    ASSERT_NO_FATAL_FAILURE(expectSafe(ExactBytes(file))) << "round " << round;
  }
}

}  // namespace
}  // namespace kiv
