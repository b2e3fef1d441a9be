#include "base/sha256.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "base/processor.h"
#include "base/sha256_block.h"

namespace kiv {
namespace {

// The first 32 bits of the fractional parts of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> roundConstants = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

using Words = std::array<std::uint32_t, 16>;

std::uint32_t bigEndian(const char* bytes) {
  const auto byte = [&](std::size_t i) { return std::uint32_t{static_cast<unsigned char>(bytes[i])}; };
  return byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3);
}

Words wordsOf(const char* block) {
  Words words{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    words[i] = bigEndian(block + 4 * i);
  }
  return words;
}

/// The word of a later round, in the place of that of 16 rounds before.
std::uint32_t nextWord(Words& words, std::size_t i) {
  const std::uint32_t near = words[(i + 1) % words.size()];
  const std::uint32_t far = words[(i + 14) % words.size()];
  const std::uint32_t low = std::rotr(near, 7) ^ std::rotr(near, 18) ^ near >> 3U;
  const std::uint32_t high = std::rotr(far, 17) ^ std::rotr(far, 19) ^ far >> 10U;
  return words[i % words.size()] += low + words[(i + 9) % words.size()] + high;
}

/// The eight variables of the algorithm. Rather than moved from name to name in each round, they are called by names
/// that move.
class Rounds {
 public:
  explicit Rounds(const Sha256State& state) : v_(state) {}

  /// Round i of 64; of Step only its value modulo 8 counts.
  template <std::size_t Step>
  void add(std::uint32_t wordAndConstant) {
    // rotations by 6, 11 and 25, and by 2, 13 and 22, each from the one before
    const std::uint32_t e = at<Step, 4>();
    const std::uint32_t a = at<Step, 0>();
    const std::uint32_t mixE = std::rotr(std::rotr(std::rotr(e, 14) ^ e, 5) ^ e, 6);
    const std::uint32_t mixA = std::rotr(std::rotr(std::rotr(a, 9) ^ a, 11) ^ a, 2);
    const std::uint32_t chosen = at<Step, 6>() ^ (e & (at<Step, 5>() ^ at<Step, 6>()));
    const std::uint32_t most = (a & at<Step, 1>()) | (at<Step, 2>() & (a | at<Step, 1>()));
    const std::uint32_t first = at<Step, 7>() + mixE + chosen + wordAndConstant;
    at<Step, 3>() += first;
    at<Step, 7>() = first + mixA + most;
  }

  void addTo(Sha256State& state) const {
    for (std::size_t i = 0; i < state.size(); ++i) {
      state[i] += v_[i];
    }
  }

 private:
  /// The variable that the algorithm calls a, b ... h, as 0 to 7, in this round.
  template <std::size_t Step, std::size_t Name>
  std::uint32_t& at() {
    return v_[(Name + 8 - Step % 8) % 8];
  }

  Sha256State v_;
};

template <std::size_t... Step>
void firstRounds(Rounds& rounds, const Words& words, std::index_sequence<Step...> /*steps*/) {
  (rounds.add<Step>(words[Step] + roundConstants[Step]), ...);
}

template <std::size_t... Step>
void laterRounds(Rounds& rounds, Words& words, std::size_t from, std::index_sequence<Step...> /*steps*/) {
  (rounds.add<Step>(nextWord(words, Step) + roundConstants[from + Step]), ...);
}

}  // namespace

void addBlockPortably(Sha256State& state, const char* block) {
  constexpr std::make_index_sequence<16> steps;
  Words words = wordsOf(block);
  Rounds rounds(state);
  firstRounds(rounds, words, steps);
  for (std::size_t from = words.size(); from < roundConstants.size(); from += words.size()) {
    laterRounds(rounds, words, from, steps);
  }
  rounds.addTo(state);
}

bool hasSha256Instructions() {
  static const bool hasThem = isX86WithSha256();
  return hasThem;
}

void addBlockByInstructions(Sha256State& state, const char* block) {
  addBlockOnX86(state.data(), roundConstants.data(), block);
}

void Sha256::processBlock(const char* block) {
  if (hasSha256Instructions()) {
    addBlockByInstructions(state_, block);
  } else {
    addBlockPortably(state_, block);
  }
}

void Sha256::update(std::string_view bytes) {
  allBytes_ += bytes.size();
  while (!bytes.empty()) {
    if (pendingBytes_ == 0 && bytes.size() >= blockBytes) {
      processBlock(bytes.data());
      bytes.remove_prefix(blockBytes);
      continue;
    }
    const std::size_t copied = bytes.copy(pending_.data() + pendingBytes_, blockBytes - pendingBytes_);
    pendingBytes_ += copied;
    bytes.remove_prefix(copied);
    if (pendingBytes_ == blockBytes) {
      processBlock(pending_.data());
      pendingBytes_ = 0;
    }
  }
}

Sha256Digest Sha256::digest() {
  const std::uint64_t bits = allBytes_ * 8;
  constexpr std::size_t lengthBytes = 8;
  std::string tail("\x80", 1);
  tail.resize(1 + (2 * blockBytes - lengthBytes - 1 - pendingBytes_) % blockBytes, '\0');
  for (std::size_t i = 0; i < lengthBytes; ++i) {
    tail += static_cast<char>(bits >> 8 * (lengthBytes - 1 - i) & 0xFFU);
  }
  update(tail);
  Sha256Digest digest{};
  for (std::size_t i = 0; i < digest.size(); ++i) {
    digest[i] = static_cast<unsigned char>(state_[i / 4] >> 8 * (3 - i % 4) & 0xFFU);
  }
  return digest;
}

std::string Sha256::hexDigest() {
  return hexDigits(digest());
}

std::string sha256(std::string_view bytes) {
  return hexDigits(sha256Digest(bytes));
}

Sha256Digest sha256Digest(std::string_view bytes) {
  Sha256 sha;
  sha.update(bytes);
  return sha.digest();
}

std::string hexDigits(const Sha256Digest& digest) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string hex;
  for (const unsigned char byte : digest) {
    hex += digits[byte >> 4U];
    hex += digits[byte & 0xFU];
  }
  return hex;
}

}  // namespace kiv
