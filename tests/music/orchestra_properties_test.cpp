#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/music/bar_lengths.h"
#include "tests/music/orchestra.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"
#include "verify/page_items.h"

namespace kiv::test {
namespace {

/// Numbers of the pieces to try. KIV_ORCHESTRAS names others: "5000", or "5000 from 12".
struct Numbers {
  std::uint32_t first = 1;
  std::uint32_t count = 90;
};

Numbers numbers() {
  Numbers numbers;
  if (const char* wanted = std::getenv("KIV_ORCHESTRAS")) {
    char* end = nullptr;
    numbers.count = static_cast<std::uint32_t>(std::strtoul(wanted, &end, 10));
    const std::string rest = end;
    numbers.first = rest.starts_with(" from ") ? static_cast<std::uint32_t>(std::stoul(rest.substr(6))) : 1;
  }
  return numbers;
}

std::map<std::string, std::string> pagesOf(const Orchestra& orchestra) {
  std::map<std::string, std::string> pages;
  for (const auto& [name, text] : orchestra.pages) {
    pages[name] = page(text);
  }
  return pages;
}

using Staves = std::map<std::int16_t, std::vector<Item>>;

bool isBrace(const Item& item) {
  return item.type() == ItemType::barline && item[par::kind] >= lowestBraceKind;
}

bool isSystemBarline(const Item& item) {
  return item.type() == ItemType::barline && !isBrace(item) && item[par::spannedStaves] > 1;
}

/// A result, apart.
class Result {
 public:
  Result(ConvertedGroup& group, int system) {
    std::map<float, std::int16_t> instruments;
    const proof::LoadedPage page = proof::loadPage(group.host, ConvertedGroup::resultName(system));
    for (const proof::PageItem& read : page.items) {
      if (read.item.type() == ItemType::staff) {
        instruments[read.item[par::staff]] = static_cast<std::int16_t>(read.item[par::instrument]);
      }
    }
    for (const proof::PageItem& read : page.items) {
      staves[instruments[read.item[par::staff]]].push_back(read.item);
    }
    isSound = page.error.empty() && !staves.contains(0);
  }

  /// The positions of the barlines of the lowest staff, and one right of all.
  std::vector<float> barlines() const {
    std::vector<float> positions{99999};
    for (const auto& [instrument, items] : staves) {
      for (const Item& item : items) {
        if (item.type() == ItemType::barline && !isBrace(item) && item[par::staff] == 1) {
          positions.push_back(item[par::position]);
        }
      }
    }
    std::sort(positions.begin(), positions.end());
    return positions;
  }

  Staves staves;  ///< by instrument
  bool isSound = false;
};

/// The items that any conversion carries over to a result.
std::multiset<std::string> carried(const Result& result, const OrchestraSystem& system) {
  std::multiset<std::string> items;
  for (const auto& [instrument, staff] : result.staves) {
    const bool plays = system.playing.contains(instrument);
    for (const Item& item : staff) {
      if (!isBrace(item) && (plays || isSystemBarline(item))) {
        const std::string owner = isSystemBarline(item) ? "system" : std::to_string(instrument);
        items.insert(owner + " " + std::to_string(item[par::staff]) + " " + proof::itemKey(item));
      }
    }
  }
  return items;
}

enum class Errors { none, any };

/// Looks for what is wrong with the results of a piece.
class Trial {
 public:
  Trial(Orchestra orchestra, std::uint32_t number, Errors errors)
      : orchestra_(std::move(orchestra)),
        errors_(errors),
        fitted_(pagesOf(orchestra_), number % 2 == 0, RestStaves::fitting) {
    if (!needsConversion()) {
      return;
    }
    isTried_ = true;
    if (!fitted_.converted() || fitted_.systems() != static_cast<int>(orchestra_.systems.size())) {
      fault_ = "is not converted";
      return;
    }
    ConvertedGroup plain(pagesOf(orchestra_), number % 2 == 0);
    isCompared_ = plain.converted();
    for (int system = 1; system <= fitted_.systems() && fault_.empty(); ++system) {
      if (errors_ == Errors::none) {
        checkBars(system);
      }
      if (isCompared_) {
        compare(system, plain);
      }
    }
    const std::string findings = fault_.empty() ? fitted_.findings() : "";
    fault_ += findings.empty() ? "" : "is not proved: " + findings;
  }

  bool isTried() const { return isTried_; }
  /// Whether the plain conversion ends normally, too.
  bool isCompared() const { return isCompared_; }
  /// Empty if nothing is wrong.
  const std::string& fault() const { return fault_; }
  std::string pages() const { return asText(orchestra_); }

 private:
  bool needsConversion() const {
    return std::any_of(orchestra_.systems.begin(), orchestra_.systems.end(), [&](const OrchestraSystem& system) {
      return system.playing.size() < orchestra_.instruments.size();
    });
  }

  void fail(int system, float barline, const std::string& what) {
    if (fault_.empty()) {
      fault_ = "system " + std::to_string(system) + ", after " + std::to_string(barline) + ": " + what;
    }
  }

  void checkBars(int number) {
    const Result result(fitted_, number);
    const OrchestraSystem& system = orchestra_.systems[static_cast<std::size_t>(number - 1)];
    if (!result.isSound || result.staves.size() != orchestra_.instruments.size()) {
      fail(number, 0, "the staves are not those of all instruments");
      return;
    }
    const std::vector<float> barlines = result.barlines();
    for (std::size_t b = 0; b + 1 < barlines.size(); ++b) {
      checkBar(number, result, barlines[b], barlines[b + 1]);
    }
    checkTruth(number, result, system);
  }

  /// All staves that have anything between two barlines last equally long there, and no rest staff has nothing if
  /// another has something.
  void checkBar(int number, const Result& result, float from, float to) {
    const OrchestraSystem& system = orchestra_.systems[static_cast<std::size_t>(number - 1)];
    std::optional<double> length;
    for (const auto& [instrument, items] : result.staves) {
      const double own = lasts(items, from, to);
      const bool isRestStaff = !system.playing.contains(instrument);
      if (own == 0 && !isRestStaff) {
        continue;
      }
      if (length && !lastEqually(*length, own)) {
        fail(number, from,
             "instrument " + std::to_string(instrument) + " lasts " + std::to_string(own) + ", others last " +
                 std::to_string(*length));
      }
      length = length.value_or(own);
    }
  }

  /// The rest staves have what was written, so that lasts() is checked as well.
  void checkTruth(int number, const Result& result, const OrchestraSystem& system) {
    for (const auto& [instrument, items] : result.staves) {
      if (system.playing.contains(instrument)) {
        continue;
      }
      std::ptrdiff_t rests = 0;
      for (const OrchestraBar& bar : system.bars) {
        const auto inBar = std::count_if(items.begin(), items.end(), [&](const Item& item) {
          return item.type() == ItemType::rest && item[par::position] >= bar.from && item[par::position] < bar.to;
        });
        rests += inBar;
        if (!lastEqually(lasts(items, bar.from, bar.to), bar.length)) {
          fail(number, bar.from,
               "instrument " + std::to_string(instrument) + " lasts " + std::to_string(lasts(items, bar.from, bar.to)) +
                   ", not " + std::to_string(bar.length));
        } else if (inBar > 1 && bar.whole > 0 && bar.length >= bar.whole) {
          fail(number, bar.from, "a whole bar has " + std::to_string(inBar) + " rests");
        }
      }
      const auto isRest = [](const Item& item) { return item.type() == ItemType::rest; };
      if (std::count_if(items.begin(), items.end(), isRest) != rests) {
        fail(number, 0, "instrument " + std::to_string(instrument) + " has rests outside of bars");
      }
    }
  }

  void compare(int number, ConvertedGroup& plain) {
    const OrchestraSystem& system = orchestra_.systems[static_cast<std::size_t>(number - 1)];
    if (carried(Result(fitted_, number), system) != carried(Result(plain, number), system)) {
      fail(number, 0, "more than rest staves, braces and brackets differs from the plain conversion");
    }
  }

  Orchestra orchestra_;
  Errors errors_;
  ConvertedGroup fitted_;
  bool isTried_ = false;
  bool isCompared_ = false;
  std::string fault_;
};

/// The pages of a failure, but for many pieces.
std::string withPages(const Trial& trial) {
  return std::getenv("KIV_ORCHESTRAS") == nullptr ? "\n" + trial.pages() : "";
}

TEST(FittedOrchestra, OfPiecesWithErrorsIsProvedAndCarriesTheirItems) {
  const Numbers wanted = numbers();
  int faults = 0;
  for (std::uint32_t number = wanted.first; number - wanted.first < wanted.count / 3 && faults < 5; ++number) {
    const Trial trial(withErrors(orchestraOf(number), number), number, Errors::any);
    faults += trial.fault().empty() ? 0 : 1;
    EXPECT_EQ(trial.fault(), "") << "piece " << number << withPages(trial);
  }
}

TEST(FittedOrchestra, EveryBarLastsEquallyLongOnAllStavesAndNothingButRestStavesAndBracesDiffers) {
  const Numbers wanted = numbers();
  std::uint32_t tried = 0;
  std::uint32_t compared = 0;
  int faults = 0;
  for (std::uint32_t number = wanted.first; number - wanted.first < wanted.count && faults < 5; ++number) {
    const Trial trial(orchestraOf(number), number, Errors::none);
    tried += trial.isTried() ? 1U : 0U;
    compared += trial.isCompared() ? 1U : 0U;
    faults += trial.fault().empty() ? 0 : 1;
    EXPECT_EQ(trial.fault(), "") << "piece " << number << withPages(trial);
  }
  EXPECT_GT(tried, wanted.count / 3);
  EXPECT_GT(compared, wanted.count / 5);
}

}  // namespace
}  // namespace kiv::test
