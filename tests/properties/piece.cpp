#include "tests/properties/piece.h"

namespace kiv::test::piece {
namespace {

rc::Gen<int> number(int from, int to) {
  return rc::gen::resize(rc::kNominalSize, rc::gen::inRange(from, to + 1));
}

rc::Gen<bool> seldom() {
  return rc::gen::map(number(0, 5), [](int n) { return n == 5; });
}

template <typename T>
rc::Gen<std::vector<T>> upTo(int length, rc::Gen<T> element) {
  return rc::gen::resize(length, rc::gen::container<std::vector<T>>(std::move(element)));
}

rc::Gen<InnerItem> innerItems() {
  using rc::gen::set;
  return rc::gen::build<InnerItem>(set(&InnerItem::what, number(0, 16)), set(&InnerItem::bar, number(0, 3)),
                                   set(&InnerItem::position, number(0, 195)),
                                   set(&InnerItem::parameters, upTo(4, rc::gen::pair(number(4, 20), number(-20, 20)))));
}

constexpr int instruments = 7;

rc::Gen<Staff> staves() {
  using rc::gen::set;
  return rc::gen::build<Staff>(set(&Staff::instrument, number(0, instruments - 1)), set(&Staff::hidden, seldom()),
                               set(&Staff::look, number(0, 20)), set(&Staff::clef, number(0, 4)),
                               set(&Staff::key, number(0, 4)), set(&Staff::time, number(0, 7)),
                               set(&Staff::brace, number(0, 4)), set(&Staff::barlines),
                               set(&Staff::beat, number(0, 60)), set(&Staff::items, upTo(5, innerItems())));
}

rc::Gen<System> systems() {
  using rc::gen::set;
  const auto distinct =
      rc::gen::uniqueBy<std::vector<Staff>>(staves(), [](const Staff& staff) { return staff.instrument; });
  return rc::gen::build<System>(set(&System::staves, rc::gen::nonEmpty(rc::gen::resize(5, distinct))),
                                set(&System::barlines, upTo(4, number(0, 7))), set(&System::left, number(0, 30)),
                                set(&System::edge, number(-1, 1)), set(&System::gap, number(0, 2)), set(&System::open));
}

}  // namespace

rc::Gen<Piece> pieces() {
  using rc::gen::set;
  const auto page = rc::gen::build<Page>(set(&Page::systems, rc::gen::nonEmpty(upTo(3, systems()))),
                                         set(&Page::files, number(1, 3)), set(&Page::loose, seldom()));
  return rc::gen::build<Piece>(set(&Piece::pages, rc::gen::nonEmpty(upTo(4, page))), set(&Piece::spread, number(0, 2)));
}

}  // namespace kiv::test::piece
