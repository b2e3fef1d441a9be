#include <cstdlib>
#include <iostream>
#include <new>
#include <optional>

#include <gtest/gtest.h>

#include "tests/faults/disk_checks.h"
#include "tests/faults/runs.h"

// This program has an operator new of its own in place of the library's. It gives memory, unless a fault is injected.

namespace kiv::test {
namespace {

/// Which allocation fails. Plain numbers, as they are read before any constructor runs.
struct InjectedFault {
  bool counting = false;
  long allocation = 0;    ///< counted from 1; 0 is none
  bool persists = false;  ///< all later allocations fail as well
};

InjectedFault fault;
long allocations = 0;
long alive = 0;  // allocations that are not released

void* allocate(std::size_t size) {
  if (fault.counting) {
    ++allocations;
    if (allocations == fault.allocation ||
        (fault.persists && fault.allocation != 0 && allocations > fault.allocation)) {
      return nullptr;
    }
  }
  void* const memory = std::malloc(size > 0 ? size : 1);
  alive += memory != nullptr ? 1 : 0;
  return memory;
}

void release(void* memory) {
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
  kiv::test::release(memory);
}
void operator delete[](void* memory) noexcept {
  kiv::test::release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
  kiv::test::release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  kiv::test::release(memory);
}
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  kiv::test::release(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  kiv::test::release(memory);
}

namespace kiv::test {
namespace {

/// Runs with the fault. False when the lack of memory ended it.
bool completes(RunKind kind, FakeHost& host, InjectedFault injected) {
  allocations = 0;
  fault = injected;
  fault.counting = true;
  bool ended = true;
  try {
    static_cast<void>(perform(kind, host));
  } catch (const std::bad_alloc&) {
    ended = false;
  }
  fault = {};
  return ended;
}

class MemoryFaults : public testing::TestWithParam<RunKind> {
 protected:
  MemoryFaults() {
    prepareDisk(undisturbed);
    before = undisturbed.files();
    // Before the run that counts, so that what a program allocates once for all is there.
    FakeHost first;
    prepareDisk(first);
    static_cast<void>(perform(GetParam(), first));
    EXPECT_TRUE(completes(GetParam(), undisturbed, {}));
    all = allocations;
  }

  /// Returns whether the run completed without the memory.
  bool expectOutcome(InjectedFault injected) const {
    FakeHost host;
    prepareDisk(host);
    const bool ended = completes(GetParam(), host, injected);
    EXPECT_GE(allocations, injected.allocation);
    expectInputs(before, host.files(), false);
    if (ended) {
      EXPECT_EQ(host.files(), undisturbed.files());
      EXPECT_EQ(host.messages, undisturbed.messages);
    } else {
      expectWhole(before, host.files(), undisturbed.files());
    }
    return ended;
  }

  /// The same; no memory of the program itself is lost.
  bool expectNothingLost(InjectedFault injected) const {
    const long aliveBefore = alive;
    const bool ended = expectOutcome(injected);
    EXPECT_EQ(alive, aliveBefore) << "memory is lost";
    return ended;
  }

  FakeHost undisturbed;
  Disk before;
  long all = 0;
};

INSTANTIATE_TEST_SUITE_P(Runs, MemoryFaults, testing::Values(RunKind::analysis, RunKind::panel, RunKind::sort),
                         [](const auto& kind) { return nameOf(kind.param); });

TEST_P(MemoryFaults, NoFailedAllocationLosesAnything) {
  ASSERT_GT(all, 50) << "the shortest run, of a sort, allocates memory some hundred times";
  long cases = 0;
  long ended = 0;
  for (const bool persists : {false, true}) {
    for (long allocation = 1; allocation <= all; ++allocation) {
      SCOPED_TRACE((persists ? "from " : "at ") + std::to_string(allocation));
      ended += expectNothingLost({.allocation = allocation, .persists = persists}) ? 1 : 0;
      ++cases;
    }
  }
  EXPECT_LT(ended, cases / 10) << "only what can be done with less memory continues without it";
  std::cout << all << " allocations, " << cases << " cases, " << ended << " completed\n";
}

TEST_P(MemoryFaults, TheNextRunFindsAllThatItNeeds) {
  constexpr long stride = 13;
  for (long allocation = 1; allocation <= all; allocation += stride) {
    FakeHost host;
    prepareDisk(host);
    static_cast<void>(completes(GetParam(), host, {.allocation = allocation}));
    ASSERT_TRUE(completes(GetParam(), host, {}));
    EXPECT_EQ(host.files(), undisturbed.files()) << allocation;
  }
}

}  // namespace
}  // namespace kiv::test
