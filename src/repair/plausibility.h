#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "mus/format.h"
#include "repair/candidates.h"

namespace kiv::repair {

/// How much more likely bytes are as an item of the page than as anything else that a damaged page has there, such as
/// the parameters of an item whose beginning is lost. All results are natural logarithms of such ratios: above 0 speaks
/// for the item. What it knows of items in general counts less the more it has learned of the page.
class Plausibility {
 public:
  /// The bytes of the page must outlive it. Knows nothing of this page yet.
  explicit Plausibility(std::string_view file);

  /// Learns from items of the page, in their order, instead of those that it has learned before.
  void learn(std::span<const Candidate> items);

  /// The item by itself: its type, its length and its parameters.
  double of(const Candidate& item) const;
  /// The same of an item whose length word does not say its length.
  double ofRepaired(const Candidate& item) const;
  /// The staff of an item that follows a loss, or nothing.
  double ofFirst(const Candidate& item) const;
  /// The staff of an item that follows another one.
  double ofNext(const Candidate& previous, const Candidate& item) const;

 private:
  static constexpr std::size_t wholeNumbers = 128;  // from 0 on; all others count as one
  static constexpr std::size_t types = 19;          // 1 to 18, and 0 for those that are not whole

  /// A yes or no that items of a page mostly answer in the same way.
  struct Habit {
    double yes = 0;
    double no = 0;
  };

  static std::size_t indexOf(float number);
  static std::size_t typeIndexOf(ItemType type);
  static std::size_t lengthIndexOf(const Candidate& item);
  double wordInside(float number) const { return insideLogs_[indexOf(number)]; }
  double staffOnPage(float staff) const;
  bool isAmongNeighbors(const Candidate& item) const;
  double ofTypeAndLength(const Candidate& item) const;
  static double against(const Habit& habit);
  double ofLengthWord(const Candidate& item) const;
  double ofContent(const Candidate& item) const;
  double ofParameters(const Candidate& item) const;
  double ofText(const Candidate& item) const;
  float word(const Candidate& item, int p) const;
  int strangeWords(const Candidate& item) const;
  bool endsInZero(const Candidate& item) const;
  void count(const Candidate& item);
  void countAllWords();
  void takeLogs();

  std::string_view file_;
  std::array<double, wholeNumbers + 1> inside_{};  // words within items, by their number
  std::array<double, wholeNumbers + 1> insideLogs_{};
  double insideTotal_ = 0;
  std::array<double, wholeNumbers + 1> staves_{};
  std::array<std::array<double, parameterCount + 1>, types> lengths_{};  // items by type and length; 0 for texts
  double items_ = 0;
  double benefit_ = 0;  // of the doubt, as long as nothing is learned
  std::vector<Candidate> known_;
  Habit sameStaff_;
  Habit staffOfNeighbors_;
  Habit endsInZero_;
  Habit strange_;
  double ofStrange_ = 0;
  double ofEndInZero_ = 0;
};

}  // namespace kiv::repair
