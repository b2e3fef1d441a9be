#include "tests/repair/random_pages.h"

#include <algorithm>

#include "tests/mus/page_bytes.h"
#include "tests/properties/groups.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Parameters = std::vector<float>;

constexpr std::size_t mostBytes = std::size_t{32767 - 6} * 4;

float whole(RandomGenerator& random, int from, int to) {
  return static_cast<float>(from + static_cast<int>(random.below(static_cast<std::size_t>(to - from + 1))));
}

std::string plainItem(Parameters parameters) {
  while (parameters.size() > 2 && parameters.back() == 0) {
    parameters.pop_back();
  }
  std::string item = words({static_cast<float>(parameters.size())});
  for (const float parameter : parameters) {
    item += words({parameter});
  }
  return item;
}

std::string randomText(RandomGenerator& random, std::size_t characters) {
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJ  ,.-'\xE4\xF6\xFC\xE9 0123456789";
  std::string text;
  while (text.size() < characters) {
    text += letters[random.below(letters.size())];
  }
  return text;
}

/// A text item as the writer makes it.
std::string textItem(RandomGenerator& random, float type, Parameters head, std::size_t characters) {
  std::string text = randomText(random, characters);
  head.resize(13);
  head[0] = type;
  if (type == 16) {
    head[11] = static_cast<float>(text.size());
    head[12] = 0;
  } else if (type == 11) {
    text.resize(5, ' ');
    head[12] = 0;
  }
  const std::size_t shortest = type == 11 ? 8 : type == 15 ? 24 : 4;
  text.resize((std::max(text.size(), shortest) + 3) / 4 * 4, ' ');
  std::string item = words({static_cast<float>(13 + text.size() / 4)});
  for (const float parameter : head) {
    item += words({parameter});
  }
  return item + text;
}

std::size_t charactersOf(RandomGenerator& random) {
  return random.oneIn(6) ? 1 + random.below(1200) : 1 + random.below(60);
}

/// One staff after the other, each with its bars.
class ScoreMaker {
 public:
  explicit ScoreMaker(RandomGenerator& random)
      : random_(random), staves_(1 + random.below(24)), noteLength_(whole(random, 4, 14)) {}

  std::string make(std::size_t items) {
    const std::size_t perStaff = std::max<std::size_t>(items / staves_, 1);
    std::string page;
    for (std::size_t staff = 1; staff <= staves_; ++staff) {
      position_ = 0;
      staff_ = static_cast<float>(staff);
      for (std::size_t i = 0; i < perStaff; ++i) {
        page += item(i);
      }
    }
    return page;
  }

 private:
  std::string item(std::size_t number) {
    switch (number) {
      case 0:
        return plainItem({8, staff_, 0, 0, 1, 0, 5, 0, 100 + staff_});
      case 1:
        return plainItem({3, staff_, 2, 0, whole(random_, 0, 3)});
      case 2:
        return plainItem({17, staff_, 9, 0, whole(random_, -4, 4)});
      case 3:
        return plainItem({18, staff_, 17, 0, whole(random_, 2, 9), 4});
      default:
        break;
    }
    position_ += whole(random_, 4, 60) / 4;
    if (number % 9 == 8) {
      return plainItem({14, staff_, position_, 1, random_.oneIn(5) ? 1.0F : 0.0F});
    }
    return random_.oneIn(25) ? text() : random_.oneIn(6) ? rest() : note();
  }

  std::string note() {
    constexpr float durations[] = {0.25, 0.5, 1, 1.5, 2, 3, 4};
    Parameters p{1,
                 staff_,
                 position_,
                 whole(random_, -4, 14),
                 whole(random_, 0, 22),
                 whole(random_, 0, 3),
                 durations[random_.below(7)]};
    p.resize(static_cast<std::size_t>(noteLength_) + random_.below(4));
    for (std::size_t i = 7; i < p.size(); ++i) {
      p[i] = random_.oneIn(3) ? 0 : whole(random_, -8, 40) / 4;
    }
    return plainItem(p);
  }

  std::string rest() {
    return plainItem({2, staff_, position_, 0, -2, -1, whole(random_, 1, 16) / 4, 0, random_.oneIn(3) ? -1.0F : 0.0F});
  }

  std::string text() {
    constexpr float types[] = {11, 15, 16};
    return textItem(random_, types[random_.below(3)], {0, staff_, position_, whole(random_, -20, 20)},
                    charactersOf(random_));
  }

  RandomGenerator& random_;
  std::size_t staves_;
  float noteLength_;
  float staff_ = 1;
  float position_ = 0;
};

/// Items that have nothing in common.
class MixtureMaker {
 public:
  MixtureMaker(RandomGenerator& random, PageStyle style) : random_(random), style_(style) {}

  std::string make(std::size_t items) {
    const std::size_t staves = 1 + random_.below(32);
    std::string page;
    for (std::size_t i = 0; i < items; ++i) {
      const bool scattered = style_ == PageStyle::scattered;
      const std::size_t staff = 1 + (scattered ? random_.below(staves) : i * staves / items);
      page += item(static_cast<float>(staff));
    }
    return page;
  }

 private:
  float value() {
    switch (random_.below(style_ == PageStyle::scattered ? 6 : 4)) {
      case 0:
        return 0;
      case 1:
        return whole(random_, 1, 20);
      case 2:
        return whole(random_, -40, 40) / 2;
      case 3:
        return whole(random_, -1000, 4000) / 10;
      default:
        return whole(random_, -30000, 30000);
    }
  }

  std::string item(float staff) {
    const bool isText = random_.oneIn(style_ == PageStyle::texts ? 2 : 12);
    float type = whole(random_, 1, 18);
    if (isText) {
      type = random_.oneIn(3) ? 11 : random_.oneIn(2) ? 15 : 16;
    } else if (type == 11 || type == 15 || type == 16) {
      type = 1;
    }
    Parameters p{type, staff};
    p.resize(isText ? 13 : 3 + random_.below(18));
    for (std::size_t i = 2; i < p.size(); ++i) {
      p[i] = isText && i > 5 ? 0 : value();
    }
    return isText ? textItem(random_, type, p, charactersOf(random_)) : plainItem(p);
  }

  RandomGenerator& random_;
  PageStyle style_;
};

std::string groupPage(RandomGenerator& random) {
  const rc::Random seed(random.below(1U << 30U));
  const auto group = groups(12)(seed, rc::kNominalSize).value();
  auto text = group.pages.begin();
  std::advance(text, random.below(group.pages.size()));
  return page(text->second);
}

/// The items up to the last one that a page can have.
std::string countable(const std::string& items) {
  std::size_t end = 0;
  while (end < items.size()) {
    float length = 0;
    std::copy_n(items.begin() + static_cast<std::ptrdiff_t>(end), 4, reinterpret_cast<char*>(&length));
    const std::size_t next = end + 4 * (static_cast<std::size_t>(length) + 1);
    if (next > mostBytes) {
      break;
    }
    end = next;
  }
  return items.substr(0, end);
}

}  // namespace

std::string randomPage(RandomGenerator& random, PageStyle style, std::size_t items) {
  switch (style) {
    case PageStyle::group:
      return groupPage(random);
    case PageStyle::score:
      return pageOf(countable(ScoreMaker(random).make(items)));
    default:
      return pageOf(countable(MixtureMaker(random, style).make(items)));
  }
}

}  // namespace kiv::test
