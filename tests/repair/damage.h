#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/random.h"

namespace kiv::test {

/// A page file with damages, and where its bytes come from.
class DamagedPage {
 public:
  explicit DamagedPage(std::string page);

  std::string_view original() const { return original_; }
  std::string_view bytes() const { return bytes_; }

  /// Replaces bytes, as many as there are.
  void overwrite(std::size_t offset, std::string_view content);
  /// Removes bytes, as many as there are.
  void remove(std::size_t offset, std::size_t count);
  void insert(std::size_t offset, std::string_view content);
  void cut(std::size_t size) { remove(size, bytes_.size()); }

  /// Where a byte of the damaged page stood in the original; notThere for one that was inserted.
  std::size_t originOf(std::size_t offset) const { return origins_[offset]; }
  static constexpr std::size_t notThere = SIZE_MAX;

  /// Whether the bytes from begin to end were one piece of the original, from this offset on, whatever their values.
  bool wasPiece(std::size_t begin, std::size_t end, std::size_t origin) const;
  /// The same, with the values that they had.
  bool isPiece(std::size_t begin, std::size_t end, std::size_t origin) const;

 private:
  std::string original_;
  std::string bytes_;
  std::vector<std::size_t> origins_;
};

enum class DamageKind {
  lengthOfAnyBits,  ///< a length word has random bits
  otherLength,      ///< a length word says another possible length
  cut,
  zeros,    ///< 1 to 400 bytes are zeros
  noise,    ///< 1 to 400 bytes are random
  removed,  ///< 1 to 400 bytes are missing
  header,
  trailer,  ///< missing or random
  several,  ///< two to four of those before
};

constexpr DamageKind damageKinds[] = {DamageKind::lengthOfAnyBits, DamageKind::otherLength, DamageKind::cut,
                                      DamageKind::zeros,           DamageKind::noise,       DamageKind::removed,
                                      DamageKind::header,          DamageKind::trailer,     DamageKind::several};

/// The offsets of the items of an undamaged page, and that of its trailer.
std::vector<std::size_t> itemOffsets(std::string_view page);

/// Damages the page at random.
void damage(DamagedPage& page, DamageKind kind, RandomGenerator& random);

}  // namespace kiv::test
