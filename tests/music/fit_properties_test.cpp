#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "music/music_warnings.h"
#include "tests/music/score.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"
#include "verify/page_items.h"

namespace kiv::test {
namespace {

// The same scores in every run, unless RC_PARAMS is set.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=60", 0);

std::map<std::string, std::string> pagesOf(const Score& score) {
  std::map<std::string, std::string> pages;
  for (const auto& [name, text] : score.pages) {
    pages[name] = page(text);
  }
  return pages;
}

bool needsConversion(const Score& score) {
  return std::any_of(score.systems.begin(), score.systems.end(),
                     [&](const ScoreSystem& system) { return system.plays != score.systems.front().plays; });
}

std::vector<Item> itemsOf(const std::string& page, const std::string& name, ConvertedGroup& group) {
  static_cast<void>(page);
  std::vector<Item> items;
  for (const proof::PageItem& read : proof::loadPage(group.host, name).items) {
    items.push_back(read.item);
  }
  return items;
}

/// The items of an instrument in a result. The instruments are numbered from the top down.
std::vector<Item> staffOf(ConvertedGroup& group, const Score& score, std::size_t system, std::size_t instrument) {
  const float number = static_cast<float>(score.instruments.size() - instrument);
  std::vector<Item> items = itemsOf("", ConvertedGroup::resultName(static_cast<int>(system) + 1), group);
  std::erase_if(items, [&](const Item& item) { return item[par::staff] != number; });
  return items;
}

bool isIn(const Item& item, const ScoreBar& bar) {
  return item[par::position] >= bar.from && item[par::position] < bar.to;
}

/// Calls the function for every silent instrument of every system.
template <typename Check>
void forEachRestStaff(const Score& score, ConvertedGroup& group, Check check) {
  for (std::size_t s = 0; s < score.systems.size(); ++s) {
    for (std::size_t i = 0; i < score.instruments.size(); ++i) {
      if (!score.systems[s].plays[i]) {
        check(score.systems[s], score.instruments[i], staffOf(group, score, s, i));
      }
    }
  }
}

Score convertible(int series) {
  return *rc::gen::suchThat(scores(series), needsConversion);
}

RC_GTEST_PROP(FitProperty, EveryBarOfARestStaffLastsAsLongAsTheMusic, ()) {
  const Score score = convertible(1);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  RC_ASSERT(group.converted());
  forEachRestStaff(score, group,
                   [&](const ScoreSystem& system, const ScoreInstrument&, const std::vector<Item>& items) {
                     std::size_t inBars = 0;
                     for (const ScoreBar& bar : system.bars) {
                       double length = 0;
                       int rests = 0;
                       for (const Item& item : items) {
                         if (item.type() == ItemType::rest && isIn(item, bar)) {
                           length += item[par::duration];
                           ++rests;
                         }
                       }
                       inBars += static_cast<std::size_t>(rests);
                       RC_ASSERT(std::abs(length - bar.length) < 0.001);
                       RC_ASSERT(rests == 1 || bar.length < bar.whole);
                     }
                     const auto isRest = [](const Item& item) { return item.type() == ItemType::rest; };
                     RC_ASSERT(static_cast<std::size_t>(std::count_if(items.begin(), items.end(), isRest)) == inBars);
                   });
}

RC_GTEST_PROP(FitProperty, RestsOfPartsOfBarsBeginWhereTheirValuesFallOnBeats, ()) {
  const Score score = convertible(2);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  forEachRestStaff(score, group,
                   [&](const ScoreSystem& system, const ScoreInstrument&, const std::vector<Item>& items) {
                     for (const ScoreBar& bar : system.bars) {
                       double now = bar.isPickup ? bar.whole - bar.length : 0;
                       float position = bar.from - 1;
                       for (const Item& item : items) {
                         if (item.type() != ItemType::rest || !isIn(item, bar) || bar.length >= bar.whole) {
                           continue;
                         }
                         const double parts = now / item[par::duration];
                         RC_ASSERT(std::abs(parts - std::round(parts)) < 0.001);
                         RC_ASSERT(item[par::position] > position);
                         position = item[par::position];
                         now += item[par::duration];
                       }
                     }
                   });
}

RC_GTEST_PROP(FitProperty, TheKeyOfASilentInstrumentIsThatOfThePiece, ()) {
  const Score score = convertible(3);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  forEachRestStaff(score, group,
                   [&](const ScoreSystem& system, const ScoreInstrument& instrument, const std::vector<Item>& items) {
                     float key = 0;
                     bool any = false;
                     auto item = items.begin();
                     for (const ScoreBar& bar : system.bars) {
                       const float music = bar.from + (&bar == &system.bars.front() ? 28 : 8);
                       for (; item != items.end() && (*item)[par::position] < music; ++item) {
                         if (item->type() == ItemType::keySignature) {
                           key = (*item)[par::key];
                           any = true;
                         }
                       }
                       const int right = instrument.plan.hasKeys ? instrument.keyIn(bar.key) : 0;
                       RC_ASSERT((static_cast<int>(key) - right) % 12 == 0);
                     }
                     RC_ASSERT(instrument.plan.hasKeys || !any);
                   });
}

RC_GTEST_PROP(FitProperty, AStaffLooksAsWhereItsInstrumentPlays, ()) {
  const Score score = convertible(4);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  forEachRestStaff(score, group,
                   [&](const ScoreSystem& system, const ScoreInstrument& instrument, const std::vector<Item>& items) {
                     for (const Item& item : items) {
                       if (item.type() == ItemType::staff) {
                         RC_ASSERT(item[par::position] == system.left);
                         RC_ASSERT(item[par::size] == instrument.size);
                         RC_ASSERT(item[par::lines] == (instrument.plan.hasOneLine ? 1 : 5));
                         RC_ASSERT(item[par::instrument] == static_cast<float>(instrument.id));
                       } else if (item.type() == ItemType::clef) {
                         RC_ASSERT(item[par::kind] == static_cast<float>(instrument.plan.clef));
                       }
                     }
                   });
}

RC_GTEST_PROP(FitProperty, ABracketJoinsItsInstrumentsInEveryResult, ()) {
  const Score score = convertible(5);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  for (std::size_t s = 0; s < score.systems.size(); ++s) {
    int braces = 0;
    for (const Item& item : itemsOf("", ConvertedGroup::resultName(static_cast<int>(s) + 1), group)) {
      if (item.type() == ItemType::barline && item[par::kind] >= lowestBraceKind) {
        ++braces;
        RC_ASSERT(item[par::kind] == 9);
        RC_ASSERT(item[par::position] == score.systems[s].left);
        RC_ASSERT(static_cast<int>(item[par::staff]) == static_cast<int>(score.instruments.size()) - score.braced + 1);
        RC_ASSERT(static_cast<int>(item[par::spannedStaves]) == score.braced);
      }
    }
    RC_ASSERT(braces == (score.braced > 0 ? 1 : 0));
  }
}

std::vector<kiv::Message> warningsOf(const Score& score, ConvertedGroup& group) {
  std::vector<CheckedResult> results;
  for (std::size_t s = 0; s < score.systems.size(); ++s) {
    CheckedResult& result = results.emplace_back();
    result.file = ConvertedGroup::resultName(static_cast<int>(s) + 1);
    for (std::size_t i = 0; i < score.instruments.size(); ++i) {
      if (score.systems[s].plays[i]) {
        result.playing.insert(static_cast<std::int16_t>(score.instruments[i].id));
      }
    }
  }
  return findMusicWarnings(group.host, results);
}

RC_GTEST_PROP(FitProperty, TheResultsHaveNoneOfTheWarningsAndAreProved, ()) {
  const Score score = convertible(6);
  ConvertedGroup group(pagesOf(score), *rc::gen::arbitrary<bool>(), RestStaves::fitting);
  RC_ASSERT(group.converted());
  const std::string findings = group.findings();
  RC_ASSERT(findings == "");
  const auto warnings = warningsOf(score, group);
  RC_ASSERT((warnings.empty() ? "" : warnings.front().text) == "");
}

RC_GTEST_PROP(FitProperty, NoNumberOfARestStaffCanBeChanged, ()) {
  const Score score = convertible(7);
  ConvertedGroup group(pagesOf(score), true, RestStaves::fitting);
  const int system = *rc::gen::inRange(1, group.systems() + 1);
  const std::size_t which = *rc::gen::inRange<std::size_t>(0, 1000);
  const int parameter = *rc::gen::element(3, 4, 5, 6, 7, 9);
  group.changeResult(system, [&](std::vector<Item>& items) {
    Item& item = items[which % items.size()];
    item[item.type() == ItemType::staff && parameter == 4 ? 5 : parameter] += 1;
  });
  RC_ASSERT(!group.verify().proved());
}

/// The items of all real staves but barlines, as bytes.
std::multiset<std::string> realItems(const Score& score, ConvertedGroup& group) {
  std::multiset<std::string> all;
  for (std::size_t s = 0; s < score.systems.size(); ++s) {
    for (std::size_t i = 0; i < score.instruments.size(); ++i) {
      for (const Item& item : score.systems[s].plays[i] ? staffOf(group, score, s, i) : std::vector<Item>()) {
        if (item.type() != ItemType::barline || item[par::kind] < lowestBraceKind) {
          all.insert(std::to_string(s) + ":" + std::to_string(i) + ":" + proof::itemKey(item));
        }
      }
    }
  }
  return all;
}

RC_GTEST_PROP(FitProperty, RealStavesAreThoseOfThePlainConversionWhereItEndsNormally, ()) {
  const Score score = convertible(8);
  ConvertedGroup fitted(pagesOf(score), true, RestStaves::fitting);
  ConvertedGroup plain(pagesOf(score), true);
  RC_ASSERT(fitted.converted());
  if (plain.converted()) {
    RC_ASSERT(realItems(score, plain) == realItems(score, fitted));
  }
}

}  // namespace
}  // namespace kiv::test
