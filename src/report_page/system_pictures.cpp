#include "report_page/system_pictures.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/number.h"
#include "mus/format.h"
#include "mus/page_walker.h"

namespace kiv::report {
namespace {

constexpr std::size_t bytesOfAStaff = 40;  // beside its code, about

int whole(double number) {
  return static_cast<int>(std::lround(number));
}

PictureStaff staffOf(const PlacedStaff& placed) {
  PictureStaff staff;
  staff.bottom = whole(placed.bottom);
  staff.left = whole(placed.left);
  staff.right = whole(placed.right);
  staff.lines = placed.lines;
  staff.id = placed.instrument;
  return staff;
}

PictureMark markOf(const ResultMark& wanted, std::size_t staff, const Picture& picture) {
  constexpr int beside = 10;  // of something that has no width
  PictureMark mark{staff, std::nullopt, wanted.about, std::nullopt};
  if (wanted.bar) {
    const int margin = wanted.bar->first == wanted.bar->second ? beside : 0;
    mark.x = std::max(0, picture.origin + pixelsAt(wanted.bar->first) - margin);
    const int end = picture.origin + pixelsAt(wanted.bar->second) + margin;
    mark.right = std::max(*mark.x, std::min(end, picture.staves[staff].right + margin));
  }
  return mark;
}

bool showsItsNumber(const PlacedStaff& staff) {
  return std::any_of(staff.items.begin(), staff.items.end(),
                     [](const Item& item) { return item.type() == ItemType::instrumentNumber; });
}

/// The items of a page, with texts in UTF-8; item 1 comes first.
std::vector<Item> itemsOf(std::string_view bytes, const PictureMaker::Text& text) {
  std::vector<Item> items;
  PageWalker walker(bytes);
  while (walker.findItem() == ReadStatus::itemRead) {
    Item& item = items.emplace_back();
    walker.decode(item);
    if (!item.text.empty()) {
      item.text = text(item.text);
    }
  }
  return items;
}

/// Adds the items of the staves that have a number in the picture, with that number.
void addItems(const std::vector<Item>& page, const std::map<float, float>& numbers, std::vector<Item>& items) {
  if (items.empty()) {
    items.reserve(page.size());
  }
  for (const Item& item : page) {
    const auto number = numbers.find(item[par::staff]);
    if (number != numbers.end()) {
      items.push_back(item);
      items.back()[par::staff] = number->second;
    }
  }
}

}  // namespace

PictureMaker::PictureMaker(Files& files, const Text& text)
    : files_(files), text_(text), pages_(files, [text](std::string_view bytes) { return itemsOf(bytes, text); }) {}

Picture PictureMaker::pictureFrom(const PageLayout& layout) {
  Picture picture;
  picture.width = whole(layout.width);
  picture.height = whole(layout.height);
  picture.origin = whole(layout.x(0));
  picture.staves.reserve(layout.staves.size());
  for (std::size_t s = 0; s < layout.staves.size(); ++s) {
    PictureStaff staff = staffOf(layout.staves[s]);
    staff.code = codes_.numberOf(staffCode(layout.staves[s], texts_));
    staff.barlines = codes_.numberOf(barlineCode(layout, s));
    if (showsItsNumber(layout.staves[s])) {
      staff.id.reset();
    }
    picture.staves.push_back(staff);
  }
  staves_ += picture.staves.size();
  return picture;
}

Picture PictureMaker::pictureOf(const SystemFact& system, const std::vector<WantedMark>& marks) {
  StaffNumbers numbers;
  for (const StaffFact& staff : system.staves) {
    const auto number = static_cast<float>(numericValue(staff.staff));
    numbers[staff.file].emplace(number, static_cast<float>(numericValue(staff.newStaff)));
  }
  pages_.keepOnlyFilesOf(system);
  std::vector<Item> items;
  for (const auto& [name, numbersOfFile] : numbers) {
    addItems(pages_.page(name), numbersOfFile, items);
  }
  const PageLayout layout = layOut(items);
  Picture picture = pictureFrom(layout);
  addMarks(marks, numbers, layout, picture);
  return picture;
}

void PictureMaker::addMarks(const std::vector<WantedMark>& marks, const StaffNumbers& numbers, const PageLayout& layout,
                            Picture& picture) {
  for (const WantedMark& wanted : marks) {
    const auto file = numbers.find(wanted.file);
    if (file == numbers.end()) {
      continue;
    }
    const auto number = file->second.find(wanted.staff);
    if (number == file->second.end()) {
      continue;
    }
    const auto staff = std::find_if(layout.staves.begin(), layout.staves.end(),
                                    [&](const PlacedStaff& s) { return s.number == number->second; });
    if (staff == layout.staves.end()) {
      continue;
    }
    PictureMark mark{static_cast<std::size_t>(staff - layout.staves.begin()), std::nullopt, wanted.about, std::nullopt};
    const std::vector<Item>& items = pages_.page(wanted.file);
    const auto index = static_cast<std::size_t>(wanted.item);
    if (wanted.item > 0 && index <= items.size() && items[index - 1].type() != ItemType::staff) {
      mark.x = picture.origin + pixelsAt(items[index - 1][par::position]);
    }
    (wanted.isProposal ? picture.proposals : picture.problems).push_back(mark);
  }
}

Picture PictureMaker::pictureOfResult(const SystemFact& system, const std::vector<Item>& result,
                                      const std::vector<ResultMark>& marks) {
  std::set<std::string> present;
  for (const StaffFact& staff : system.staves) {
    present.insert(generalNumber(static_cast<float>(staff.instrument)));
  }
  const PageLayout layout = layOut(result);
  Picture picture = pictureFrom(layout);
  for (std::size_t s = 0; s < picture.staves.size(); ++s) {
    picture.staves[s].isInserted = !present.contains(generalNumber(std::fabs(layout.staves[s].instrument)));
    for (const ResultMark& wanted : marks) {
      if (wanted.staff == layout.staves[s].number) {
        picture.problems.push_back(markOf(wanted, s, picture));
      }
    }
  }
  return picture;
}

Pictures PictureMaker::draw(const GroupFacts& facts, const WantedPictures& wanted) {
  Pictures pictures;
  static const std::vector<WantedMark> none;
  static const std::vector<ResultMark> noneOfResult;
  for (const std::size_t index : wanted.systems) {
    if (codes_.bytes() + texts_.bytes() + staves_ * bytesOfAStaff > wanted.mostBytes) {
      ++pictures.leftOut;
      continue;
    }
    const SystemFact system = facts.system(index);
    const auto marks = wanted.marks.find(index);
    SystemPicture picture;
    picture.system = static_cast<std::size_t>(system.number);
    picture.before = pictureOf(system, marks == wanted.marks.end() ? none : marks->second);
    if (wanted.result) {
      const std::vector<Item> result =
          itemsOf(readWhole(files_, wanted.result(picture.system), readableBytes).value_or(""), text_);
      if (!result.empty()) {
        const auto found = wanted.resultMarks.find(index);
        picture.after = pictureOfResult(wanted.converted == nullptr ? system : wanted.converted->system(index), result,
                                        found == wanted.resultMarks.end() ? noneOfResult : found->second);
      }
    }
    pictures.systems.push_back(std::move(picture));
  }
  std::sort(pictures.systems.begin(), pictures.systems.end(),
            [](const SystemPicture& a, const SystemPicture& b) { return a.system < b.system; });
  pictures.codes = std::move(codes_).takeTexts();
  pictures.texts = std::move(texts_).takeTexts();
  return pictures;
}

}  // namespace kiv::report
