// Any bytes as a damaged page file: what is recovered is in them, and can be read.

#include "repair/recovery.h"

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/support/expect.h"
#include "fuzz/support/page_mutator.h"
#include "mus/page_walker.h"

namespace kiv::fuzz {
namespace {

void checkRanges(std::string_view file, const repair::Recovery& recovery) {
  std::size_t end = 0;
  for (const repair::SavedItem& item : recovery.items) {
    expect(item.bytes.begin >= end && item.bytes.begin < item.bytes.end, "items are saved in their order");
    end = item.bytes.end;
  }
  expect(end <= file.size(), "items are saved from the file");
  end = 0;
  for (const repair::Loss& loss : recovery.losses) {
    expect(loss.bytes.begin >= end && loss.bytes.begin < loss.bytes.end, "losses are in their order");
    expect(loss.itemsBefore <= recovery.items.size(), "a loss is among the items");
    end = loss.bytes.end;
  }
  expect(end <= file.size(), "losses are in the file");
}

/// A page reader finds just the items that were saved, byte for byte.
void checkPage(std::string_view file, const repair::Recovery& recovery) {
  const std::string page = repair::recoveredPage(file, recovery);
  PageWalker walker(page);
  for (const repair::SavedItem& item : recovery.items) {
    expect(walker.findItem() == ReadStatus::itemRead, "a recovered item is read");
    const std::string_view saved = file.substr(item.bytes.begin, item.bytes.size());
    expect(page.substr(walker.itemOffset(), walker.position() - walker.itemOffset()) == saved,
           "a recovered item is what it was");
  }
  expect(walker.findItem() == ReadStatus::endOfItems, "a recovered page ends after its items");
  expect(repair::recover(page).isWhole, "a recovered page is whole");
}

bool isReadable(std::string_view file) {
  PageWalker walker(file);
  ReadStatus status = walker.findItem();
  while (status == ReadStatus::itemRead) {
    status = walker.findItem();
  }
  return status == ReadStatus::endOfItems;
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kiv::fuzz;
  // In a block of its size, so that a step past its end is seen.
  const std::vector<char> block(data, data + size);
  const std::string_view file(block.data(), block.size());
  const kiv::repair::Recovery recovery = kiv::repair::recover(file);
  expect(!recovery.isWhole || isReadable(file), "a page that is whole can be read");
  checkRanges(file, recovery);
  checkPage(file, recovery);
  return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
  const bool asBytes = seed % 2 == 0;
  return asBytes ? LLVMFuzzerMutate(data, size, maxSize) : kiv::fuzz::mutatePage(data, size, maxSize, seed);
}
