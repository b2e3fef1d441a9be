#include "conversion/dump_memory.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

const std::string heading =
    "============= order table ===============\r\n"
    "index         instr         size          lines         par11         clef          hite          key           "
    "type          timeUp        timeDn\r\n";

class DumpMemory : public ::testing::Test {
 protected:
  void dump(std::string_view pageText) { dump(tableOf(host, pageText)); }
  void dump(const ItemTable& items) {
    end = endOf(host, [&] { dumpMemory(host, "C:\\M\\X1.MUS", items, order); });
  }
  /// The lines that the dump has for the items of a page.
  std::string itemsOf(const ItemTable& items) {
    dump(items);
    const std::string written = host.file("KivSystemDump.txt");
    const std::string file = "File C:\\M\\X1.MUS\r\n";
    EXPECT_TRUE(written.starts_with(file)) << written;
    EXPECT_TRUE(written.ends_with(heading)) << written;
    return written.substr(file.size(), written.size() - file.size() - heading.size());
  }
  std::string itemsOf(std::string_view pageText) { return itemsOf(tableOf(host, pageText)); }
  /// The lines that the dump has for the order table.
  std::string orderLines() {
    dump("");
    const std::string written = host.file("KivSystemDump.txt");
    const std::string before = "File C:\\M\\X1.MUS\r\n" + heading;
    EXPECT_TRUE(written.starts_with(before)) << written;
    return written.substr(before.size());
  }

  FakeHost host;
  OrderTable order;
  std::optional<int> end;
};

// --- the file ---

TEST_F(DumpMemory, WritesFileItemsAndOrderTable) {
  setInstrumentOrder({101, -7}, order);
  order.entry(1) = {101, 1, MarkedValue(0.5F), 5, 2, MarkedValue(3), -4, 3, 1, 6, 8};
  dump("staff 1 at 12 size 0.5 lines 5 instrument 101\nnote 1 at 20.25 height -5\n");
  EXPECT_EQ(
      host.file("KivSystemDump.txt"),
      "File C:\\M\\X1.MUS\r\n"
      "Item 1\r\n"
      " 8 1 12 0 0.5 0 5 0 101\r\n"
      "Item 2\r\n"
      " 1 1 20.25 -5\r\n" +
          heading +
          " 1             101           1000.5        5             2             1003         -4             3   "
          "          1             6             8 \r\n"
          " 2            -7             0             0             0             0             0             0   "
          "          0             0             0 \r\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(DumpMemory, EmptyTablesLeaveTheHeadings) {
  dump("");
  EXPECT_EQ(host.file("KivSystemDump.txt"), "File C:\\M\\X1.MUS\r\n" + heading);
}

TEST_F(DumpMemory, OldDumpIsReplaced) {
  host.addFile("KivSystemDump.txt", std::string(1000, 'x'));
  dump("");
  EXPECT_EQ(host.file("KivSystemDump.txt"), "File C:\\M\\X1.MUS\r\n" + heading);
}

TEST_F(DumpMemory, DumpIsInTheCurrentFolder) {
  host.folder = "C:\\ELSEWHERE";
  dump("");
  EXPECT_TRUE(host.hasFile("C:\\ELSEWHERE\\KivSystemDump.txt"));
}

TEST_F(DumpMemory, FileThatCannotBeCreatedEndsTheProgramSilently) {
  host.unwritable = {"KivSystemDump.txt"};
  dump("");
  EXPECT_EQ(end, 0) << "no critical box was shown";
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.calls.empty());
}

TEST_F(DumpMemory, FullDiskEndsTheProgramWithThePlatformsText) {
  host.writeFailure = "No space left on device";
  dump("");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: No space left on device\r\nKivSystemDump.txt")});
  EXPECT_TRUE(host.calls.empty());
}

// --- the viewer ---

TEST_F(DumpMemory, NotepadShowsTheDump) {
  dump("");
  EXPECT_EQ(host.calls, Texts{"run Notepad KivSystemDump.txt"});
}

TEST_F(DumpMemory, UserInterfaceThatShowsTextsShowsTheDump) {
  host.showsTexts = true;
  dump("");
  EXPECT_EQ(host.calls, Texts{"show KivSystemDump.txt"});
}

TEST_F(DumpMemory, NotepadThatDoesNotStartIsReportedAndTheRunContinues) {
  host.exitCode = -1;
  dump("");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling Notepad KivSystemDump.txt")});
}

TEST_F(DumpMemory, FileIsClosedBeforeItIsShown) {
  class WatchingHost : public FakeHost {
   public:
    std::unique_ptr<OutputFile> openOutput(const std::string& name) override {
      class Watched : public OutputFile {
       public:
        Watched(std::unique_ptr<OutputFile> file, Texts& log) : file_(std::move(file)), log_(log) {}
        Watched(const Watched&) = delete;
        Watched& operator=(const Watched&) = delete;
        ~Watched() override { log_.emplace_back("close"); }
        std::optional<std::string> write(std::string_view bytes) override { return file_->write(bytes); }

       private:
        std::unique_ptr<OutputFile> file_;
        Texts& log_;
      };
      return std::make_unique<Watched>(FakeHost::openOutput(name), calls);
    }
  };
  WatchingHost watching;
  dumpMemory(watching, "C:\\M\\X1.MUS", ItemTable(), order);
  EXPECT_EQ(watching.calls, (Texts{"close", "run Notepad KivSystemDump.txt"}));
}

// --- items ---

TEST_F(DumpMemory, ItemOfZerosHasAnEmptyLineForItsParameters) {
  ItemTable items;
  items.store_item(Item());
  items.store_item(itemOf({}, "dolce"));
  EXPECT_EQ(itemsOf(items), "Item 1\r\n\r\nItem 2\r\ndolce\r\n");
}

TEST_F(DumpMemory, ZerosWithinTheParametersAreKeptAndThoseAtTheEndAreNot) {
  EXPECT_EQ(itemsOf("item 8 1 12 0 5\n"), "Item 1\r\n 8 1 12 0 5\r\n");
  EXPECT_EQ(itemsOf("item 8 1 0 0\n"), "Item 1\r\n 8 1\r\n");
  EXPECT_EQ(itemsOf("item 8 0 0 0 0 0 0 0 0 0 3\n"), "Item 1\r\n 8 0 0 0 0 0 0 0 0 0 3\r\n");
}

TEST_F(DumpMemory, NumbersThatOnlyEndInAZeroAreKept) {
  EXPECT_EQ(itemsOf("item 8 1 10\n"), "Item 1\r\n 8 1 10\r\n");
  EXPECT_EQ(itemsOf("item 8 1 100 0 0\n"), "Item 1\r\n 8 1 100\r\n");
  EXPECT_EQ(itemsOf("item 8 1 1e10 0\n"), "Item 1\r\n 8 1 1E+10\r\n");
}

TEST_F(DumpMemory, AllTwentyParametersAreShown) {
  ItemTable items;
  Item item;
  for (int p = 1; p <= 20; ++p) {
    item[p] = static_cast<float>(p);
  }
  items.store_item(item);
  EXPECT_EQ(itemsOf(items), "Item 1\r\n 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20\r\n");
}

TEST_F(DumpMemory, NumbersAreInGeneralForm) {
  EXPECT_EQ(itemsOf("item 8 -1 0.5 1234567.9 0x7FC00000 0xFF800000 1e-9 -0 7 -0\n"),
            "Item 1\r\n 8 -1 0.5 1234568 NAN -INF 1E-09 0 7\r\n");
}

TEST_F(DumpMemory, TextFollowsTheParametersAtOnce) {
  ItemTable items;
  items.store_item(itemOf({15, 1, 60}, " \"piu\" \xE4 0 "));
  items.store_item(itemOf({16, 2}, "p"));
  EXPECT_EQ(itemsOf(items), "Item 1\r\n 15 1 60 \"piu\" \xE4 0 \r\nItem 2\r\n 16 2p\r\n");
}

TEST_F(DumpMemory, TextThatEndsInAZeroLosesNothing) {
  ItemTable items;
  items.store_item(itemOf({15, 1, 60}, "op. 0 0"));
  EXPECT_EQ(itemsOf(items), "Item 1\r\n 15 1 60op. 0 0\r\n");
}

TEST_F(DumpMemory, RowsBeyondTheTableAreNotShown) {
  ItemTable items = tableOf(host, "staff 1 at 0\nnote 1 at 5\n");
  items.clear();
  items.store_item(itemOf({14, 3}));
  EXPECT_EQ(itemsOf(items), "Item 1\r\n 14 3\r\n");
}

TEST_F(DumpMemory, FullTableIsShownToItsLastItem) {
  ItemTable items;
  for (int i = 1; i <= itemLimit; ++i) {
    items.store_item(itemOf({1, static_cast<float>(i)}));
  }
  EXPECT_TRUE(itemsOf(items).ends_with("Item 5000\r\n 1 5000\r\n"));
}

// --- the order table ---

TEST_F(DumpMemory, SizeAndClefAreShownWithTheirMarker) {
  setInstrumentOrder({5}, order);
  order.entry(1).size = MarkedValue(0);
  order.entry(1).clef = MarkedValue(2);
  EXPECT_EQ(orderLines(),
            " 1             5             1000          0             0             1002          0             0      "
            "       0             0             0 \r\n");
}

TEST_F(DumpMemory, EveryColumnIsInItsZoneAndPresenceInNone) {
  setInstrumentOrder({20}, order);
  order.entry(1) = {20, 99, MarkedValue(-970), 40, 50, MarkedValue(-940), 70, 80, 90, 100, 110};
  EXPECT_EQ(orderLines(),
            " 1             20            30            40            50            60            70            80     "
            "       90            100           110 \r\n");
}

TEST_F(DumpMemory, NumberThatFillsItsZoneLeavesTheNextOneEmpty) {
  setInstrumentOrder({5}, order);
  order.entry(1).lines = -1.234567E-10F;
  const std::string line = orderLines();
  EXPECT_EQ(line.substr(42, 14), "-1.234567E-10 ");
  EXPECT_EQ(line.substr(56, 14), std::string(14, ' '));
  EXPECT_EQ(line.substr(70),
            " 0             0             0             0             0             0             0 \r\n");
}

TEST_F(DumpMemory, EntriesBeyondTheOrderAreNotShown) {
  setInstrumentOrder({5, 6}, order);
  order.entry(2).size = MarkedValue(1);
  setInstrumentOrder({7}, order);
  EXPECT_EQ(orderLines(),
            " 1             7             0             0             0             0             0             0      "
            "       0             0             0 \r\n");
}

}  // namespace
}  // namespace kiv::test
