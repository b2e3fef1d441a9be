#include <cstddef>
#include <string>
#include <vector>

#include "tests/mus/page_items.h"

namespace kiv::test {
namespace {

/// What a walk finds from here on: status, counters and first words of all items, and how it ends.
std::vector<std::string> stepsOf(PageWalker& page) {
  std::vector<std::string> steps;
  for (ReadStatus status = ReadStatus::itemRead; status == ReadStatus::itemRead;) {
    status = page.findItem();
    steps.push_back("status " + std::to_string(static_cast<int>(status)) + " item " +
                    std::to_string(page.itemsInFile()) + " offset " + std::to_string(page.itemOffset()) + " words " +
                    std::to_string(page.wordsRead()) + " byte " + std::to_string(page.position()) + " staff " +
                    std::to_string(page.storedPar(2)) + " text '" + std::string(page.chunks()) + "'");
  }
  return steps;
}

TEST(GoTo, LetsTheWalkGoOnAsIfItHadComeThere) {
  const std::string items = plainItem(4) + textItem(14, 15, 3, 0, "ABCD") + words({2, 1, 7}) + plainItem(2);
  for (const std::string& file : {pageOf(items), pageOf(items + plainItem(0)), header(60) + items}) {
    PageWalker inOneGo(file);
    const std::vector<std::string> all = stepsOf(inOneGo);
    PageWalker page(file);
    for (std::size_t item = 0; item < 4; ++item) {
      ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
      PageWalker other(file);
      stepsOf(other);
      other.goTo({page.itemsInFile(), page.itemOffset()});
      EXPECT_EQ(stepsOf(other), std::vector(all.begin() + static_cast<std::ptrdiff_t>(item), all.end())) << item;
    }
  }
}

}  // namespace
}  // namespace kiv::test
