#include "fuzz/support/expect.h"

#include <cstdlib>
#include <iostream>

// The sanitizer quarantines freed blocks, and a run frees many: a large quarantine would take most of the time.
extern "C" const char* __asan_default_options();   // NOLINT(bugprone-reserved-identifier,cert-*): the sanitizer's name
extern "C" const char* __asan_default_options() {  // NOLINT(bugprone-reserved-identifier,cert-*)
  return "quarantine_size_mb=1:malloc_context_size=1";
}

namespace kiv::fuzz {

void expect(bool holds, std::string_view what) {
  if (!holds) {
    std::cerr << "does not hold: " << what << '\n';
    std::abort();
  }
}

}  // namespace kiv::fuzz
