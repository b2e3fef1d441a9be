#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kiv {

/// What SHA-256 knows of the blocks so far.
using Sha256State = std::array<std::uint32_t, 8>;

/// Adds a block of 64 bytes, on any processor.
void addBlockPortably(Sha256State& state, const char* block);

/// Whether this processor has instructions for SHA-256, which take a quarter of the time.
bool hasSha256Instructions();
/// The same with these instructions. Only where the processor has them.
void addBlockByInstructions(Sha256State& state, const char* block);

/// Does that on an x86 processor: 8 words of state, 64 constants.
void addBlockOnX86(std::uint32_t* state, const std::uint32_t* constants, const char* block);

}  // namespace kiv
