// Any bytes as a page file: the walk gives what plain reading gives, and what it gives survives being written.

#include <array>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/support/expect.h"
#include "fuzz/support/items.h"
#include "fuzz/support/memory_host.h"
#include "fuzz/support/page_mutator.h"
#include "mus/reader.h"
#include "mus/writer.h"
#include "tests/mus/plain_reader.h"

namespace kiv::fuzz {
namespace {

constexpr const char* pageName = "C:\\M\\X1.MUS";
constexpr int highestStaff = 32;

bool sameBits(const std::array<float, parameterCount + 1>& one, const std::array<float, parameterCount + 1>& other) {
  for (std::size_t p = 1; p < one.size(); ++p) {
    if (std::bit_cast<std::uint32_t>(one[p]) != std::bit_cast<std::uint32_t>(other[p])) {
      return false;
    }
  }
  return true;
}

ReadStatus compareWithPlainReading(std::string_view file) {
  static Item item;
  PageWalker page(file);
  test::PlainReader plain(file);
  ReadStatus status = page.findItem();
  ReadStatus expected = plain.readItem();
  while (status == ReadStatus::itemRead && expected == ReadStatus::itemRead) {
    page.decode(item);
    expect(sameBits(item.par, plain.curPar), "the walk gives the parameters of plain reading");
    expect(item.text == plain.curText, "the walk gives the text of plain reading");
    expect(page.wordsRead() == plain.wordsRead, "the walk comes as far as plain reading");
    status = page.findItem();
    expected = plain.readItem();
  }
  expect(status == expected, "the walk ends as plain reading does");
  expect(page.itemsInFile() == plain.itemsInFile, "the walk counts items as plain reading does");
  expect(page.trailerNumberText() == plain.trailerNumberText && page.unitText() == plain.unitText,
         "the walk reads the trailer as plain reading does");
  return status;
}

/// What is to come out when the table is written and read again.
std::vector<Item> expectedAgain(const ItemTable& table) {
  std::vector<Item> items;
  for (int staff = 1; staff <= highestStaff; ++staff) {
    for (int i = 1; i <= table.itemCount(); ++i) {
      if (table.itemPar(i, par::staff) == static_cast<float>(staff)) {
        Item& item = items.emplace_back();
        for (int p = 1; p <= parameterCount; ++p) {
          item.par[static_cast<std::size_t>(p)] = table.itemPar(i, p);
        }
        item.text = table.itemText(i);
        item = asReadAgain(std::move(item));
      }
    }
  }
  return items;
}

/// A page that was read well and is written again reads as the same items, and its bytes are those of a second writing.
/// Left out are items of no staff from 1 to 32, which are not written, and pages with a counted text of no characters,
/// which the writer makes unreadable.
void checkWriting(MemoryHost& host, std::string_view file) {
  static ItemTable table;
  host.addFile(pageName, std::string(file));
  readFile(host, pageName, table);
  const std::vector<Item> expected = expectedAgain(table);
  for (const Item& item : expected) {
    if (!isReadableAgain(item)) {
      return;
    }
  }
  const std::string written = encodePage(host, pageName, table);
  const auto again = itemsOf(written);
  expect(again.has_value(), "what was written can be read");
  expect(again->size() == expected.size(), "as many items are read as were written");
  for (std::size_t i = 0; i < expected.size(); ++i) {
    expect(sameItem((*again)[i], expected[i]), "an item that was written reads as it was");
  }
  host.addFile(pageName, written);
  readFile(host, pageName, table);
  expect(encodePage(host, pageName, table) == written, "what was written, read and written again is the same");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kiv::fuzz;
  // In a block of its size, so that a step past its end is seen.
  const std::vector<char> block(data, data + size);
  const std::string_view file(block.data(), block.size());
  if (compareWithPlainReading(file) == kiv::ReadStatus::endOfItems) {
    static MemoryHost host;
    host.restart();
    checkWriting(host, file);
  }
  return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
  const bool plain = seed % 3 == 0;
  return plain ? LLVMFuzzerMutate(data, size, maxSize) : kiv::fuzz::mutatePage(data, size, maxSize, seed);
}
