#include <cstdlib>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/properties/group_conversion.h"

namespace kiv::test {
namespace {

// The same groups in every run, unless whoever runs the tests wants others.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=40", 0);

/// The conversion has written the same bytes as the reference implementation, and ended with the same message.
void expectReference(const GroupConversion& conversion) {
  const GroupConversion::Reference reference = conversion.convertByReference();
  RC_ASSERT(reference.lastMessage == conversion.lastMessage());
  RC_ASSERT(reference.results.size() == conversion.systems());
  for (std::size_t system = 1; system <= conversion.systems(); ++system) {
    RC_ASSERT(conversion.result(system) == reference.results[system - 1]);
  }
}

RC_GTEST_PROP(ReferenceProperty, TheConversionWritesTheSameBytesAsTheReferenceImplementation, (bool showNumbers)) {
  expectReference(GroupConversion(*groups(10), showNumbers));
}

RC_GTEST_PROP(ReferenceProperty, AnotherConversionOfTheResultsWritesTheSameBytesToo, (bool showNumbers)) {
  const GroupConversion conversion(*groups(11), showNumbers);
  expectReference(GroupConversion(conversion, showNumbers));
}

}  // namespace
}  // namespace kiv::test
