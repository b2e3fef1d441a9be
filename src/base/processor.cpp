#include "base/processor.h"

#if defined(__x86_64__)
#include <cpuid.h>
#elif defined(_M_X64)
#include <intrin.h>
#endif

namespace kiv {
namespace {

struct Features {
  unsigned ebx = 0;
  unsigned ecx = 0;
};

/// A leaf of what the processor says about itself; zeros when it does not know the leaf.
[[maybe_unused]] Features featuresIn([[maybe_unused]] unsigned leaf) {
#if defined(__x86_64__)
  Features found;
  unsigned eax = 0;
  unsigned edx = 0;
  return __get_cpuid_count(leaf, 0, &eax, &found.ebx, &found.ecx, &edx) != 0 ? found : Features();
#elif defined(_M_X64)
  int words[4] = {};
  __cpuid(words, 0);
  if (static_cast<unsigned>(words[0]) < leaf) {
    return {};
  }
  __cpuidex(words, static_cast<int>(leaf), 0);
  return {static_cast<unsigned>(words[1]), static_cast<unsigned>(words[2])};
#else
  return {};
#endif
}

}  // namespace

bool isX86WithSha256() {
  constexpr unsigned ssse3 = 1U << 9U;
  constexpr unsigned sse41 = 1U << 19U;
  constexpr unsigned sha = 1U << 29U;
  const bool hasOthers = (featuresIn(1).ecx & (ssse3 | sse41)) == (ssse3 | sse41);
  return hasOthers && (featuresIn(7).ebx & sha) != 0;
}

}  // namespace kiv
