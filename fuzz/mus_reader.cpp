// Any bytes as a page file: the walk gives what the reference reader gives, and that survives being written.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/items.h"
#include "fuzz/support/page_mutator.h"
#include "mus/encoding_check.h"
#include "mus/reader.h"
#include "mus/writer.h"
#include "tests/reference/page_reader.h"

namespace kiv::fuzz {
namespace {

constexpr const char* pageName = "C:\\M\\X1.MUS";
constexpr int highestStaff = 32;

bool sameBits(const Item& one, const Item& other) {
  return std::ranges::equal(one.parameters(), other.parameters(), [](float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
  });
}

ReadStatus compareWithReference(std::string_view file) {
  static Item item;
  PageWalker page(file);
  reference::PageReader reference(file);
  ReadStatus status = page.findItem();
  ReadStatus expected = reference.readItem();
  while (status == ReadStatus::itemRead && expected == ReadStatus::itemRead) {
    page.decode(item);
    expect(sameBits(item, reference.current), "the walk gives the parameters that the reference reader gives");
    expect(item.text == reference.current.text, "the walk gives the text that the reference reader gives");
    expect(page.wordsRead() == reference.wordsRead, "the walk comes as far as the reference reader");
    status = page.findItem();
    expected = reference.readItem();
  }
  expect(status == expected, "the walk ends as the reference reader does");
  expect(page.itemsInFile() == reference.itemsInFile, "the walk counts items as the reference reader does");
  expect(page.trailerNumberText() == reference.trailerNumberText && page.unitText() == reference.unitText,
         "the walk reads the trailer as the reference reader does");
  return status;
}

/// What must result when the table is written and read again.
std::vector<Item> expectedAgain(const ItemTable& table) {
  std::vector<Item> items;
  for (int staff = 1; staff <= highestStaff; ++staff) {
    for (int i = 1; i <= table.itemCount(); ++i) {
      if (table.itemPar(i, par::staff) == static_cast<float>(staff)) {
        items.push_back(asReadAgain(table.item(i)));
      }
    }
  }
  return items;
}

/// A page that was read successfully and is written again reads as the same items, and its bytes are those of a second
/// writing. Left out are items of no staff from 1 to 32, which are not written, and pages with a counted text of no
/// characters, which the writer makes unreadable; the check of the encoding finds these.
void checkWriting(std::string_view file) {
  test::FixedMachine machine;
  FuzzFiles files(machine);
  static ItemTable table;
  files.addFile(pageName, std::string(file));
  readFile(files, pageName, table);
  const std::vector<Item> expected = expectedAgain(table);
  const bool readable = std::ranges::all_of(expected, isReadableAgain);
  std::string written;
  encodePage(pageName, table, written);
  expect(findLostItem(written, table).has_value() == !readable,
         "an encoding that loses an item is found, and no other");
  if (!readable) {
    return;
  }
  const auto again = itemsOf(written);
  expect(again.has_value(), "what was written can be read");
  expect(again->size() == expected.size(), "as many items are read as were written");
  for (std::size_t i = 0; i < expected.size(); ++i) {
    expect(sameItem((*again)[i], expected[i]), "an item that was written reads as it was");
  }
  files.addFile(pageName, written);
  readFile(files, pageName, table);
  std::string writtenAgain;
  encodePage(pageName, table, writtenAgain);
  expect(writtenAgain == written, "what was written, read and written again is the same");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kiv::fuzz;
  // In a block of its size, so that a step past its end is seen.
  const std::vector<char> block(data, data + size);
  const std::string_view file(block.data(), block.size());
  if (compareWithReference(file) == kiv::ReadStatus::endOfItems) {
    checkWriting(file);
  }
  return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
  const bool asBytes = seed % 3 == 0;
  return asBytes ? LLVMFuzzerMutate(data, size, maxSize) : kiv::fuzz::mutatePage(data, size, maxSize, seed);
}
