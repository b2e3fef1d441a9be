#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analysis/page_outline.h"
#include "tests/analysis/read_bar_data_fixture.h"
#include "tests/support/outlined_input.h"

namespace kiv::test {
namespace {

/// Notes the numbers of the items that it is given.
class NotingFile : public FileObserver {
 public:
  void addItem(const PageWalker& page) override { items.push_back(page.itemsInFile()); }

  std::vector<int> items;
};

/// Looks at files ahead, and is content with that or not.
class NotingObserver : public AnalysisObserver {
 public:
  std::unique_ptr<FileObserver> observerAhead() const override { return std::make_unique<NotingFile>(); }
  FileObserver* beginFile(const std::string& /*musFileName*/, std::string_view /*bytes*/,
                          std::unique_ptr<FileObserver> ahead) override {
    if (const auto* const noted = dynamic_cast<const NotingFile*>(ahead.get())) {
      itemsAhead = noted->items;
    }
    return ahead && isContent ? nullptr : &later;
  }
  void endFile() override { ++ended; }
  void endPage(const ItemTable& /*table*/, const std::vector<int>& /*staves*/) override {}

  bool isContent = true;
  std::vector<int> itemsAhead;
  NotingFile later;
  int ended = 0;
};

/// A host whose files come with these outlines.
class OutlinedHost : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& /*name*/) override {
    return std::make_unique<OutlinedInput>(bytes, std::move(outline));
  }

  std::string bytes;
  std::unique_ptr<FileOutline> outline;
};

/// A page that is read with its outline.
class OutlinedPage : public testing::Test {
 protected:
  /// Reads it. Returns the exit code of a program that ended over it.
  std::optional<int> read(AnalysisObserver* observed) {
    host.outline = PageOutliner(observed).outlineOf(host.bytes);
    return endOf(host,
                 [&] { BarDataReader(host, host, host, observed).readBarData("C:\\M\\A1.MUS", 0, table, firstClefs); });
  }

  OutlinedHost host;
  NotingObserver observer;
  ItemTable table;
  FirstClefTable firstClefs;
};

const std::string pageText =
    "staff 1 at 0 instrument 101\nnote 1 at 1\nrest 1 at 2\nnote 2 at 3\nbarline 1 at 9\nkeysignature 1 at 10 key "
    "2\nrest 1 at 11 kind -2 cue 104\nnote 1 at 12\n";
const std::string looked =
    "staff 1 at 0 instrument 101 \"STAFF=1,FILE=C:\\M\\A1.MUS\"\nbarline 1 at 9\nrest 1 at 11 kind -2 cue 104\n";

TEST_F(OutlinedPage, ItsItemsAreGivenToAnObserverAheadOnly) {
  host.bytes = page(pageText);
  EXPECT_EQ(read(&observer), std::nullopt);
  EXPECT_EQ(observer.itemsAhead, (std::vector<int>{1, 3, 5, 6, 7}));
  EXPECT_EQ(observer.later.items, std::vector<int>());
  EXPECT_EQ(observer.ended, 1);
  EXPECT_EQ(asText(table), looked);
}

TEST_F(OutlinedPage, ItsItemsAreGivenToAnObserverThatWantsThemAgain) {
  host.bytes = page(pageText);
  observer.isContent = false;
  EXPECT_EQ(read(&observer), std::nullopt);
  EXPECT_EQ(observer.later.items, (std::vector<int>{1, 3, 5, 6, 7}));
  EXPECT_EQ(asText(table), looked);
}

TEST_F(OutlinedPage, NeedsNoObserver) {
  host.bytes = page(pageText);
  EXPECT_EQ(read(nullptr), std::nullopt);
  EXPECT_EQ(asText(table), looked);
}

TEST_F(OutlinedPage, HasThePlacesOfWhatAnAnalysisLooksAt) {
  const std::string bytes = page("note 1 at 1\nstaff 1 at 0\nnote 1 at 2\nnote 1 at 3\n");
  const auto outline = PageOutliner(nullptr).outlineOf(bytes);
  const auto& places = dynamic_cast<const PageOutline&>(*outline).places;
  constexpr std::size_t note = 4 * 4;  // bytes, with its length
  ASSERT_EQ(places.size(), 2U);
  EXPECT_EQ(places[0], (ItemPlace{2, 2 + note}));
  EXPECT_EQ(places[1], (ItemPlace{5, bytes.size() - 24})) << "the trailer";
}

TEST_F(OutlinedPage, EndsWhereItIsBroken) {
  host.bytes = page("staff 1 at 0\nnote 1 at 1\nbarline 1 at 9\n");
  host.bytes.resize(host.bytes.size() - 24 - 4);
  EXPECT_EQ(read(&observer), 1);
  EXPECT_EQ(host.shown.at(0).location.item, 3);
  EXPECT_EQ(observer.ended, 0);
}

TEST_F(OutlinedPage, HasNoneWithoutAHeader) {
  for (const std::string_view bytes : {"", "\x01"}) {
    EXPECT_EQ(PageOutliner(&observer).outlineOf(bytes), nullptr);
  }
}

}  // namespace
}  // namespace kiv::test
