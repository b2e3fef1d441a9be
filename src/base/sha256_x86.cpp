// One block of SHA-256 by the instructions that newer x86 processors have for it. This file alone is compiled for such
// processors. So that no code of it serves others, it uses nothing that is inline and shared with other files.

#include "base/sha256_block.h"

#if defined(__x86_64__) || defined(_M_X64)

#include <immintrin.h>

namespace kiv {
namespace {

__m128i load(const void* from) {
  return _mm_loadu_si128(static_cast<const __m128i*>(from));
}

void store(void* to, __m128i words) {
  _mm_storeu_si128(static_cast<__m128i*>(to), words);
}

/// The four words that follow the last 16, from the oldest four to the newest.
__m128i nextWords(__m128i oldest, __m128i older, __m128i newer, __m128i newest) {
  const __m128i sevenBefore = _mm_alignr_epi8(newest, newer, 4);
  return _mm_sha256msg2_epu32(_mm_add_epi32(_mm_sha256msg1_epu32(oldest, older), sevenBefore), newest);
}

}  // namespace

void addBlockOnX86(std::uint32_t* state, const std::uint32_t* constants, const char* block) {
  // The instructions want the eight variables as a, b, e, f and c, d, g, h, the first ones in the highest words.
  const __m128i first = _mm_shuffle_epi32(load(state), 0xB1);
  const __m128i last = _mm_shuffle_epi32(load(state + 4), 0x1B);
  const __m128i abefBefore = _mm_alignr_epi8(first, last, 8);
  const __m128i cdghBefore = _mm_blend_epi16(last, first, 0xF0);
  __m128i abef = abefBefore;
  __m128i cdgh = cdghBefore;
  const __m128i bigEndian = _mm_set_epi8(12, 13, 14, 15, 8, 9, 10, 11, 4, 5, 6, 7, 0, 1, 2, 3);
  __m128i words[4];
  for (std::size_t four = 0; four < 16; ++four) {
    __m128i& now = words[four % 4];
    now = four < 4 ? _mm_shuffle_epi8(load(block + 16 * four), bigEndian)
                   : nextWords(now, words[(four + 1) % 4], words[(four + 2) % 4], words[(four + 3) % 4]);
    const __m128i added = _mm_add_epi32(now, load(constants + 4 * four));
    cdgh = _mm_sha256rnds2_epu32(cdgh, abef, added);
    abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(added, 0x0E));
  }
  const __m128i feba = _mm_shuffle_epi32(_mm_add_epi32(abef, abefBefore), 0x1B);
  const __m128i dchg = _mm_shuffle_epi32(_mm_add_epi32(cdgh, cdghBefore), 0xB1);
  store(state, _mm_blend_epi16(feba, dchg, 0xF0));
  store(state + 4, _mm_alignr_epi8(dchg, feba, 8));
}

}  // namespace kiv

#else

namespace kiv {

void addBlockOnX86(std::uint32_t* /*state*/, const std::uint32_t* /*constants*/, const char* /*block*/) {}

}  // namespace kiv

#endif
