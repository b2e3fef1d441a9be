#include "mus/reader.h"

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"
#include "tests/support/pages.h"

namespace kiv {
namespace {

using test::critical;
using test::endOf;
using test::FakeHost;
using test::header;
using test::Message;
using test::page;
using test::pageOf;
using test::trailer;
using test::words;
using test::zeroWords;

const std::string brokenPage = "Structural error in MUS file. Try to recover with KivValid/KivRecover.";
const std::string tooManyItems = "MUS file too big for operation. Hit OK to terminate.";

class ReadFile : public testing::Test {
 protected:
  /// Loads the content as the page P.MUS. Returns the exit code of a program that ended over it.
  std::optional<int> load(const std::string& content) {
    host_.addFile("C:\\P.MUS", content);
    return endOf(host_, [&] { readFile(host_, "C:\\P.MUS", table_); });
  }

  /// The program ends over the content after one critical box.
  void expectEnd(const std::string& content, const std::string& text) {
    host_.messages.clear();
    EXPECT_EQ(load(content), 1);
    EXPECT_EQ(host_.messages, std::vector<Message>{critical(text)});
  }

  FakeHost host_;
  ItemTable table_;
};

/// A page of this many items, each of two parameters.
std::string pageOfItems(int count) {
  std::string items;
  for (int n = 0; n < count; ++n) {
    items += words({2, 4, 1});
  }
  return pageOf(items);
}

TEST_F(ReadFile, StoresEveryItemWithItsParametersAndText) {
  EXPECT_EQ(load(page("staff 2 at 5 lines 5 instrument 7\n"
                      "text 1 at 65 p13 4 \"Allegro\"\n"
                      "countedtext 1 at 70 \"Vivo\"\n")),
            std::nullopt);
  EXPECT_EQ(table_.itemCount(), 3);
  EXPECT_EQ(test::asText(table_),
            "staff 2 at 5 lines 5 instrument 7\n"
            "text 1 at 65 p13 4 \"Allegro                 \"\n"
            "countedtext 1 at 70 characters 4 \"Vivo\"\n");
  EXPECT_EQ(host_.messages, std::vector<Message>{});
}

TEST_F(ReadFile, OfAnEmptyPageEmptiesTheTable) {
  ASSERT_EQ(load(page("note 1 at 20\n")), std::nullopt);
  EXPECT_EQ(load(header(6) + trailer()), std::nullopt);
  EXPECT_EQ(table_.itemCount(), 0);
}

TEST_F(ReadFile, LeavesOldRowsBeyondItsItemsAsTheyAre) {
  ASSERT_EQ(load(page("note 1 at 20 p20 7\ntext 2 at 30 \"old\"\n")), std::nullopt);
  ASSERT_EQ(load(page("clef 3 at 40\n")), std::nullopt);
  EXPECT_EQ(table_.itemCount(), 1);
  EXPECT_EQ(table_.itemPar(1, 1), 3);
  EXPECT_EQ(table_.itemPar(1, 20), 0) << "a row that is stored again is replaced as a whole";
  EXPECT_EQ(table_.itemPar(2, 1), 15);
  EXPECT_EQ(table_.itemPar(2, 3), 30);
  EXPECT_EQ(table_.itemText(2), "old                     ");
}

TEST_F(ReadFile, GivesEveryItemTheFileAndItsNumber) {
  ASSERT_EQ(load(page("note 1 at 20\nnote 1 at 30\n")), std::nullopt);
  EXPECT_EQ(table_.file(), "C:\\P.MUS");
  EXPECT_EQ(table_.location(1), (Location{.file = "C:\\P.MUS", .item = 1}));
  EXPECT_EQ(table_.location(2), (Location{.file = "C:\\P.MUS", .item = 2}));
}

TEST_F(ReadFile, OpensTheFileOnce) {
  ASSERT_EQ(load(page("note 1 at 20\n")), std::nullopt);
  EXPECT_EQ(host_.timesRead("C:\\P.MUS"), 1);
}

TEST_F(ReadFile, OfAFileThatIsNotThereIsAStructuralError) {
  EXPECT_EQ(endOf(host_, [&] { readFile(host_, "C:\\NONE.MUS", table_); }), 1);
  EXPECT_EQ(host_.messages, std::vector<Message>{critical(brokenPage)});
}

TEST_F(ReadFile, EndsTheProgramOverEveryStructuralError) {
  const std::pair<const char*, std::string> broken[] = {
      {"no header", ""},
      {"half a header", "\x06"},
      {"negative header", header(-1) + trailer()},
      {"header too small", header(4 + 6 - 2) + words({3, 4, 1, 50}) + trailer()},
      {"length below 2", pageOf(words({0.5F, 4, 1, 50}))},
      {"type below 1", pageOf(words({3, 0.99F, 1, 50}))},
      {"type above 18", pageOf(words({3, 18.5F, 1, 50}))},
      {"text item shorter than 14", pageOf(words({13, 15, 1, 50}) + zeroWords(10))},
      {"text of negative length", pageOf(words({14, 16, 1, 50}) + zeroWords(8) + words({-0.6F, 0}) + "ABCD")},
      {"end of file within an item", header(100) + words({3, 4, 1})},
  };
  for (const auto& [name, content] : broken) {
    SCOPED_TRACE(name);
    expectEnd(content, brokenPage);
  }
}

TEST_F(ReadFile, EndsTheProgramOverAnItemOfMoreThanTwentyParameters) {
  expectEnd(pageOf(words({2, 4, 1}) + words({21, 4}) + zeroWords(20)),
            "Run-time error: Subscript out of range\r\nC:\\P.MUS, item 2");
}

TEST_F(ReadFile, OfAFileThatEndsBeforeTheTwentyFirstParameterIsAStructuralError) {
  expectEnd(header(100) + words({21, 4}) + zeroWords(19), brokenPage);
}

TEST_F(ReadFile, CutAnywhereEndsTheProgramOrLosesNoItem) {
  const std::string whole = page("note 1 at 20\ntext 1 at 30 \"ab\"\n");
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    SCOPED_TRACE(size);
    if (size < whole.size() - 24) {
      expectEnd(whole.substr(0, size), brokenPage);
    } else {
      EXPECT_EQ(load(whole.substr(0, size)), std::nullopt);
      EXPECT_EQ(table_.itemCount(), 2);
    }
  }
}

TEST_F(ReadFile, LoadsFiveThousandItems) {
  EXPECT_EQ(load(pageOfItems(5000)), std::nullopt);
  EXPECT_EQ(table_.itemCount(), 5000);
  EXPECT_EQ(table_.itemPar(5000, 1), 4);
}

TEST_F(ReadFile, EndsTheProgramOverItem5001EvenIfTheFileIsValid) {
  expectEnd(pageOfItems(5001), tooManyItems);
}

TEST_F(ReadFile, ReportsItem5001BeforeAnErrorAfterIt) {
  const std::string whole = pageOfItems(5001);
  expectEnd(whole.substr(0, whole.size() - 24), tooManyItems);
  const std::string cutInItem5001 = whole.substr(0, whole.size() - 25);
  expectEnd(cutInItem5001, brokenPage);
}

// --- reader ---

TEST(MusReader, HasNoLimitOfItsOwn) {
  FakeHost host;
  host.addFile("C:\\P.MUS", pageOfItems(5001));
  MusReader reader;
  reader.openMUSfile(host, "C:\\P.MUS");
  while (reader.readItem() == ReadStatus::itemRead) {
  }
  EXPECT_EQ(reader.page().itemsInFile(), 5001);
  EXPECT_EQ(host.messages, std::vector<Message>{});
}

TEST(MusReader, ForgetsTheFileBefore) {
  FakeHost host;
  host.addFile("C:\\A.MUS", page("note 1 at 20\nnote 1 at 30\n"));
  host.addFile("C:\\B.MUS", page("clef 1 at 20\n"));
  MusReader reader;
  reader.openMUSfile(host, "C:\\A.MUS");
  while (reader.readItem() == ReadStatus::itemRead) {
  }
  ASSERT_EQ(reader.page().trailerNumberText(), "0 ");
  reader.openMUSfile(host, "C:\\B.MUS");
  EXPECT_EQ(reader.page().wordsRead(), 0);
  EXPECT_EQ(reader.page().itemsInFile(), 0);
  EXPECT_EQ(reader.page().trailerNumberText(), "");
  ASSERT_EQ(reader.readItem(), ReadStatus::itemRead);
  EXPECT_EQ(reader.page().type(), ItemType::clef);
}

TEST(MusReader, NamesTheFileAndTheNumberOfTheItem) {
  FakeHost host;
  host.addFile("C:\\P.MUS", page("note 1 at 20\n"));
  MusReader reader;
  reader.openMUSfile(host, "C:\\P.MUS");
  EXPECT_EQ(reader.location(), (Location{.file = "C:\\P.MUS", .item = 0}));
  ASSERT_EQ(reader.readItem(), ReadStatus::itemRead);
  EXPECT_EQ(reader.location(), (Location{.file = "C:\\P.MUS", .item = 1}));
}

TEST(MusReader, GivesAStructuralErrorForAFileThatIsNotThere) {
  FakeHost host;
  host.addFile("C:\\P.MUS", page("note 1 at 20\n"));
  MusReader reader;
  reader.openMUSfile(host, "C:\\P.MUS");
  reader.openMUSfile(host, "C:\\NONE.MUS");
  EXPECT_EQ(reader.page().fileWords(), -1);
  EXPECT_EQ(reader.readItem(), ReadStatus::structuralError);
  EXPECT_EQ(reader.page().itemsInFile(), 0);
  EXPECT_EQ(host.messages, std::vector<Message>{}) << "what it means is for the caller to say";
}

/// A disk whose files can be opened and not be read.
class FailingDisk : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& /*name*/) override {
    struct FailingFile : InputFile {
      std::optional<std::size_t> read(std::span<char> /*buffer*/) override { return std::nullopt; }
    };
    return std::make_unique<FailingFile>();
  }
};

TEST(MusReader, GivesAStructuralErrorForAFileThatCannotBeRead) {
  FailingDisk host;
  MusReader reader;
  reader.openMUSfile(host, "C:\\P.MUS");
  EXPECT_EQ(reader.page().fileWords(), -1);
  EXPECT_EQ(reader.readItem(), ReadStatus::structuralError);
}

TEST(MusReader, ReachesTheEndOfTheLongestPageThatThereIs) {
  // Three text items, the last of which begins where the count of the header ends and is as long as an item can be.
  const auto text = [](int length) {
    return words({static_cast<float>(length), 15}) + zeroWords(static_cast<std::size_t>(length) - 1);
  };
  FakeHost host;
  host.addFile("C:\\P.MUS", header(32767) + text(20000) + text(32767 - 20001 - 1) + text(32767) + "beyond the reach");
  MusReader reader;
  reader.openMUSfile(host, "C:\\P.MUS");
  EXPECT_EQ(reader.readItem(), ReadStatus::itemRead);
  EXPECT_EQ(reader.readItem(), ReadStatus::itemRead);
  EXPECT_EQ(reader.page().wordsRead(), 32767);
  EXPECT_EQ(reader.readItem(), ReadStatus::itemRead);
  EXPECT_EQ(reader.page().wordsRead(), 32767 + 32768);
  EXPECT_EQ(reader.page().position(), readableBytes);
  EXPECT_EQ(reader.readItem(), ReadStatus::structuralError);
}

}  // namespace
}  // namespace kiv
