#include "base/sha256.h"

#include <algorithm>
#include <bit>

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

std::uint32_t bigEndian(const char* bytes) {
  std::uint32_t word = 0;
  for (int i = 0; i < 4; ++i) {
    word = word << 8U | static_cast<unsigned char>(bytes[i]);
  }
  return word;
}

std::array<std::uint32_t, 64> schedule(const char* block) {
  std::array<std::uint32_t, 64> words{};
  for (std::size_t i = 0; i < 16; ++i) {
    words[i] = bigEndian(block + 4 * i);
  }
  for (std::size_t i = 16; i < words.size(); ++i) {
    const std::uint32_t near = words[i - 15];
    const std::uint32_t far = words[i - 2];
    const std::uint32_t low = std::rotr(near, 7) ^ std::rotr(near, 18) ^ near >> 3U;
    const std::uint32_t high = std::rotr(far, 17) ^ std::rotr(far, 19) ^ far >> 10U;
    words[i] = words[i - 16] + low + words[i - 7] + high;
  }
  return words;
}

}  // namespace

void Sha256::processBlock(const char* block) {
  const auto words = schedule(block);
  auto [a, b, c, d, e, f, g, h] = state_;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::uint32_t mixE = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
    const std::uint32_t first = h + mixE + ((e & f) ^ (~e & g)) + roundConstants[i] + words[i];
    const std::uint32_t mixA = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
    const std::uint32_t second = mixA + ((a & b) ^ (a & c) ^ (b & c));
    h = g;
    g = f;
    f = e;
    e = d + first;
    d = c;
    c = b;
    b = a;
    a = first + second;
  }
  const std::array<std::uint32_t, 8> added = {a, b, c, d, e, f, g, h};
  for (std::size_t i = 0; i < state_.size(); ++i) {
    state_[i] += added[i];
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

std::string Sha256::hexDigest() {
  const std::uint64_t bits = allBytes_ * 8;
  constexpr std::size_t lengthBytes = 8;
  std::string tail("\x80", 1);
  tail.resize(1 + (2 * blockBytes - lengthBytes - 1 - pendingBytes_) % blockBytes, '\0');
  for (std::size_t i = 0; i < lengthBytes; ++i) {
    tail += static_cast<char>(bits >> 8 * (lengthBytes - 1 - i) & 0xFFU);
  }
  update(tail);
  constexpr std::string_view digits = "0123456789abcdef";
  std::string hex;
  for (const std::uint32_t word : state_) {
    for (int shift = 28; shift >= 0; shift -= 4) {
      hex += digits[word >> static_cast<unsigned>(shift) & 0xFU];
    }
  }
  return hex;
}

std::string sha256(std::string_view bytes) {
  Sha256 digest;
  digest.update(bytes);
  return digest.hexDigest();
}

}  // namespace kiv
