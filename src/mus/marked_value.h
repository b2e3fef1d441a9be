#pragma once

namespace kiv {

/// A parameter that a table remembers, or none yet. It is kept as the parameter + 1000 in single precision, and comes
/// back with what that sum has lost: 0.6 as 0.5999756. The sum 0 stands for unknown, so a parameter of -1000 is lost.
class MarkedValue {
 public:
  constexpr MarkedValue() = default;
  constexpr explicit MarkedValue(float parameter) : stored_(parameter + marker) {}

  constexpr bool isKnown() const { return stored_ != 0; }
  /// The parameter; -1000 when it is unknown.
  constexpr float value() const { return stored_ - marker; }
  /// The sum itself, for which 0 is unknown.
  constexpr float stored() const { return stored_; }
  /// The parameter when it is not negative; otherwise the sum itself.
  constexpr float valueUnlessNegative() const { return stored_ >= marker ? stored_ - marker : stored_; }

  constexpr bool operator==(const MarkedValue&) const = default;

 private:
  static constexpr float marker = 1000;
  float stored_ = 0;
};

}  // namespace kiv
