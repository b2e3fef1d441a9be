// Damages generated pages, recovers them, and prints how many of their items came back and in how many pages none was
// invented, as a table. Usage: measure_recovery [PAGES [FIRST]]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "tests/repair/recovery_figures.h"

namespace kiv::test {
namespace {

std::string nameOf(DamageKind kind) {
  switch (kind) {
    case DamageKind::lengthOfAnyBits:
      return "a length word of random bits";
    case DamageKind::otherLength:
      return "a length word from 2 to 20";
    case DamageKind::cut:
      return "a cut";
    case DamageKind::zeros:
      return "1 to 400 zeros";
    case DamageKind::noise:
      return "1 to 400 random bytes";
    case DamageKind::removed:
      return "1 to 400 bytes missing";
    case DamageKind::header:
      return "a random header";
    case DamageKind::trailer:
      return "no trailer, or random bytes";
    case DamageKind::several:
      return "two to four of these";
  }
  return "";
}

void printRow(const std::string& name, const RecoveryFigures& figures) {
  std::printf("| %s | %zu | %zu | %zu | %.3f %% | %zu | %.3f %% |\n", name.c_str(), figures.pages, figures.stillWhole,
              figures.undamaged, figures.itemsBack(), figures.inventing, figures.pagesWithoutInvented());
}

void measure(std::uint32_t pages, std::uint32_t first) {
  using Clock = std::chrono::steady_clock;
  std::map<DamageKind, RecoveryFigures> rows;
  Clock::duration slowest{};
  for (std::uint32_t number = first; number < first + pages; ++number) {
    const DamagedSample sample = sampleOf(number);
    const auto begun = Clock::now();
    const repair::Recovery recovery = repair::recover(sample.page.bytes());
    slowest = std::max(slowest, Clock::now() - begun);
    rows[sample.kind].add(figuresOf(sample.page, recovery));
  }
  std::puts("| damage | pages | readable | items | items back | inventing | pages without |");
  std::puts("| --- | --- | --- | --- | --- | --- | --- |");
  for (const auto& [kind, figures] : rows) {
    printRow(nameOf(kind), figures);
  }
  std::printf("\nslowest page: %.1f ms\n", std::chrono::duration<double, std::milli>(slowest).count());
}

}  // namespace
}  // namespace kiv::test

int main(int argc, char** argv) {
  constexpr std::uint32_t pages = 45000;
  const auto argument = [&](int i, std::uint32_t other) {
    return i < argc ? static_cast<std::uint32_t>(std::strtoul(argv[i], nullptr, 10)) : other;
  };
  kiv::test::measure(argument(1, pages), argument(2, 1));
}
