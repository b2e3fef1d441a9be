#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kiv {

/// How ids progress from slot to slot: most scores number their instruments regularly from the top down.
class IdProgression {
 public:
  /// The ids of the slots that are certain; 0 for the others.
  explicit IdProgression(std::vector<std::int16_t> certain);

  /// How well an id fits to the certain ones nearest to the slot: a logarithm, 0 at best.
  double fit(std::size_t slot, std::int16_t id) const;
  /// The id that a slot must have if the numbering is as regular there as elsewhere; none when it is not regular, or
  /// the id stands elsewhere.
  std::optional<std::int16_t> missingId(std::size_t slot) const;

 private:
  struct Neighbor {
    std::size_t slot;
    std::int16_t id;
  };

  std::optional<Neighbor> neighbor(std::size_t slot, bool above) const;
  std::optional<long> expected(std::size_t slot, bool above) const;

  std::vector<std::int16_t> ids_;
  long step_ = 0;
  double regular_ = 0;  // the probability that two neighbors are a step apart
  double rising_ = 0;   // that the lower one is the higher number
  bool known_ = false;  // there are enough pairs to speak of a regular numbering
};

}  // namespace kiv
