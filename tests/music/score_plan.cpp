#include "tests/music/score_plan.h"

namespace kiv::test::score {
namespace {

rc::Gen<int> number(int from, int to) {
  return rc::gen::resize(rc::kNominalSize, rc::gen::inRange(from, to + 1));
}

rc::Gen<bool> seldom(int oneIn) {
  return rc::gen::map(number(0, oneIn - 1), [](int n) { return n == 1; });
}

rc::Gen<InstrumentPlan> instruments() {
  using rc::gen::set;
  return rc::gen::build<InstrumentPlan>(
      set(&InstrumentPlan::transposition, number(-3, 3)),
      set(&InstrumentPlan::hasKeys, rc::gen::map(number(0, 3), [](int n) { return n != 3; })),
      set(&InstrumentPlan::hasOneLine, seldom(4)), set(&InstrumentPlan::clef, number(0, 2)),
      set(&InstrumentPlan::plays, number(0, 63)));
}

rc::Gen<BarPlan> bars() {
  using rc::gen::set;
  return rc::gen::build<BarPlan>(set(&BarPlan::meter, number(0, 30)), set(&BarPlan::key, number(0, 24)),
                                 set(&BarPlan::shape, number(0, 15)), set(&BarPlan::barline, number(0, 9)),
                                 set(&BarPlan::lineBreak, number(0, 3)), set(&BarPlan::seed, number(0, 9999)));
}

template <typename T>
rc::Gen<std::vector<T>> someOf(int most, rc::Gen<T> element) {
  return rc::gen::nonEmpty(rc::gen::resize(most, rc::gen::container<std::vector<T>>(std::move(element))));
}

}  // namespace

rc::Gen<Plan> plans() {
  using rc::gen::set;
  return rc::gen::build<Plan>(set(&Plan::hasPickup), set(&Plan::isOpen, seldom(4)), set(&Plan::braced, number(0, 4)),
                              set(&Plan::instruments, someOf(4, instruments())), set(&Plan::bars, someOf(12, bars())));
}

}  // namespace kiv::test::score
