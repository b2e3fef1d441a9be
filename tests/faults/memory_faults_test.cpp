#include <cstdlib>
#include <iostream>
#include <new>
#include <optional>

#include <gtest/gtest.h>

#include "tests/faults/disk_checks.h"
#include "tests/faults/runs.h"

// The program's own operator new stands in the library's place. It gives memory, unless an order says that there is
// none left.

namespace kiv::test {
namespace {

/// Which allocation fails. Plain numbers, as they are asked before any constructor runs.
struct Order {
  bool counting = false;
  long allocation = 0;  ///< counted from 1; 0 is none
  bool onward = false;
};

Order order;
long allocations = 0;
long alive = 0;  // allocations that are not given back

void* allocate(std::size_t size) {
  if (order.counting) {
    ++allocations;
    if (allocations == order.allocation || (order.onward && order.allocation != 0 && allocations > order.allocation)) {
      return nullptr;
    }
  }
  void* const memory = std::malloc(size > 0 ? size : 1);
  alive += memory != nullptr ? 1 : 0;
  return memory;
}

void giveBack(void* memory) {
  alive -= memory != nullptr ? 1 : 0;
  std::free(memory);
}

}  // namespace
}  // namespace kiv::test

void* operator new(std::size_t size) {
  void* const memory = kiv::test::allocate(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}
void* operator new[](std::size_t size) {
  return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return kiv::test::allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return kiv::test::allocate(size);
}
void operator delete(void* memory) noexcept {
  kiv::test::giveBack(memory);
}
void operator delete[](void* memory) noexcept {
  kiv::test::giveBack(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  kiv::test::giveBack(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  kiv::test::giveBack(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  kiv::test::giveBack(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  kiv::test::giveBack(memory);
}

namespace kiv::test {
namespace {

/// Runs under the order. False when the memory that it could not have ended it.
bool comesToItsEnd(RunKind kind, FakeHost& host, Order given) {
  allocations = 0;
  order = given;
  order.counting = true;
  bool ended = true;
  try {
    static_cast<void>(perform(kind, host));
  } catch (const std::bad_alloc&) {
    ended = false;
  }
  order = {};
  return ended;
}

class MemoryFaults : public testing::TestWithParam<RunKind> {
 protected:
  MemoryFaults() {
    prepareDisk(usual);
    before = usual.files();
    // Before the one that counts, so that what a program allocates once for all is there.
    FakeHost first;
    prepareDisk(first);
    static_cast<void>(perform(GetParam(), first));
    EXPECT_TRUE(comesToItsEnd(GetParam(), usual, {}));
    all = allocations;
  }

  /// Returns whether the run came to its end without the memory.
  bool expectOutcome(Order given) const {
    FakeHost host;
    prepareDisk(host);
    const bool ended = comesToItsEnd(GetParam(), host, given);
    EXPECT_GE(allocations, given.allocation);
    expectInputs(before, host.files(), false);
    if (ended) {
      EXPECT_EQ(host.files(), usual.files());
      EXPECT_EQ(host.messages, usual.messages);
    } else {
      expectWhole(before, host.files(), usual.files());
    }
    return ended;
  }

  /// The same, then without trouble on what is left. Nothing is left of the program itself.
  bool expectNothingLost(Order given) const {
    const long aliveBefore = alive;
    const bool ended = expectOutcome(given);
    EXPECT_EQ(alive, aliveBefore) << "memory is lost";
    return ended;
  }

  FakeHost usual;
  Disk before;
  long all = 0;
};

INSTANTIATE_TEST_SUITE_P(Runs, MemoryFaults, testing::Values(RunKind::analysis, RunKind::panel, RunKind::sort),
                         [](const auto& kind) { return nameOf(kind.param); });

TEST_P(MemoryFaults, NoAllocationThatFailsLosesAnything) {
  ASSERT_GT(all, 50) << "the shortest run, of a sort, asks for memory some hundred times";
  long cases = 0;
  long ended = 0;
  for (const bool onward : {false, true}) {
    for (long allocation = 1; allocation <= all; ++allocation) {
      SCOPED_TRACE((onward ? "from " : "at ") + std::to_string(allocation));
      ended += expectNothingLost({.allocation = allocation, .onward = onward}) ? 1 : 0;
      ++cases;
    }
  }
  EXPECT_LT(ended, cases / 10) << "only what can be done with less memory goes on without it";
  std::cout << all << " allocations, " << cases << " cases, " << ended << " came to their end\n";
}

TEST_P(MemoryFaults, TheNextRunFindsAllThatItNeeds) {
  constexpr long stride = 13;
  for (long allocation = 1; allocation <= all; allocation += stride) {
    FakeHost host;
    prepareDisk(host);
    static_cast<void>(comesToItsEnd(GetParam(), host, {.allocation = allocation}));
    ASSERT_TRUE(comesToItsEnd(GetParam(), host, {}));
    EXPECT_EQ(host.files(), usual.files()) << allocation;
  }
}

}  // namespace
}  // namespace kiv::test
