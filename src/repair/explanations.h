#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "repair/candidates.h"
#include "repair/plausibility.h"

namespace kiv::repair {

/// All ways to explain the bytes of a damaged page: chains of items that follow each other, interrupted by losses of
/// any length and by items of which only the length word is wrong. Each way is as likely as its items are plausible,
/// and the less likely the more damages it takes.
class Explanations {
 public:
  /// Both must outlive it.
  Explanations(const Candidates& candidates, const Plausibility& plausibility);

  /// How likely it is that the candidate is an item of the page: the share of the explanations that it belongs to, from
  /// 0 to 1, for each candidate in their order.
  std::vector<double> likelihoods();

 private:
  using Logs = std::vector<double>;  // logarithms of weights, by byte offset

  void sumForward();
  void sumBackward();
  void leaveForward(std::size_t offset);
  double leaveBackward(std::size_t offset) const;
  double lossAt(std::size_t offset) const;
  double endAt(std::size_t offset) const;
  void measureChains();
  void collectRepairs(std::size_t offset);

  /// An item of which only the length word is wrong.
  struct Repair {
    std::size_t end = 0;
    double weight = 0;
    Candidate item;
  };
  void addRepair(std::size_t offset, int length);
  void reach(std::size_t end, double weight, const Candidate& item);

  const Candidates& candidates_;
  const Plausibility& plausibility_;
  std::string_view file_;
  std::size_t stated_ = 0;                // where the header says that the trailer begins; 0 where it is in no file
  std::vector<double> weights_;           // of the candidates, by the offset where they begin
  std::vector<int> chains_;               // how many items follow each other, by the offset where they begin
  std::vector<Repair> repairs_;           // in the order of their offsets
  std::vector<std::size_t> repairsEnd_;   // behind those of each offset
  std::vector<const Candidate*> before_;  // by offset: the likeliest item that ends there; null for none
  Logs forwardItem_, forwardEnd_, forwardLoss_;     // up to a candidate, an item's end, the middle of a loss
  Logs backwardItem_, backwardEnd_, backwardLoss_;  // from there to the end of the file
};

}  // namespace kiv::repair
