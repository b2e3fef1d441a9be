#include "repair/explanations.h"

#include <algorithm>
#include <cmath>

#include "base/byte_cursor.h"
#include "mus/format.h"
#include "mus/item.h"
#include "repair/page_end.h"

namespace kiv::repair {
namespace {

constexpr double impossible = -1e300;

/// Logarithms of the weights of what is not an item.
constexpr double loss = -22;         ///< anything, as often as not
constexpr double wrongLength = -11;  ///< of an item that is there otherwise
constexpr double lossAtAnItem = -4;  ///< a loss begins where a plausible item can be read
constexpr double trailerSeen = 10;
constexpr double headerAgrees = 6;

/// Other lengths are tried of an item to which a chain of items leads, and which does not begin so long a chain.
constexpr double chainOverLoss = 6;
constexpr int longChain = 30;
constexpr int longestRepairedText = 255;

/// log(exp(a) + exp(b))
double sum(double a, double b) {
  const double high = std::max(a, b);
  const double difference = std::min(a, b) - high;
  constexpr double negligible = -30;
  return difference < negligible ? high : high + std::log1p(std::exp(difference));
}

void add(double& total, double weight) {
  total = sum(total, weight);
}

}  // namespace

Explanations::Explanations(const Candidates& candidates, const Plausibility& plausibility)
    : candidates_(candidates),
      plausibility_(plausibility),
      file_(candidates.file()),
      stated_(statedTrailer(file_).value_or(0)) {
  const Logs none(file_.size() + 1, impossible);
  weights_ = none;
  for (const Candidate& candidate : candidates.all()) {
    weights_[candidate.start] = plausibility.of(candidate);
  }
  before_.resize(file_.size() + 1);
  forwardItem_ = forwardEnd_ = forwardLoss_ = backwardItem_ = backwardEnd_ = backwardLoss_ = none;
  repairsEnd_.resize(file_.size() + 1);
  measureChains();
}

void Explanations::measureChains() {
  chains_.resize(file_.size() + 1);
  const std::span<const Candidate> all = candidates_.all();
  std::for_each(all.rbegin(), all.rend(), [&](const Candidate& item) { chains_[item.start] = 1 + chains_[item.end]; });
}

double Explanations::lossAt(std::size_t offset) const {
  return loss + std::clamp(-weights_[offset], lossAtAnItem, 0.0);
}

double Explanations::endAt(std::size_t offset) const {
  const double weight = (isTrailerAt(file_, offset) ? trailerSeen : 0) + (offset == stated_ ? headerAgrees : 0);
  return weight > 0 ? weight : impossible;
}

void Explanations::addRepair(std::size_t offset, int length) {
  const auto item = candidateOfLength(file_, offset, length);
  if (!item || (candidates_.at(item->end) == nullptr && endAt(item->end) == impossible)) {
    return;
  }
  const Candidate* read = candidates_.at(offset);
  if (read != nullptr && read->length == length) {
    return;
  }
  const Candidate* before = before_[offset];
  const double staff = before == nullptr ? plausibility_.ofFirst(*item) : plausibility_.ofNext(*before, *item);
  repairs_.push_back({item->end, wrongLength + plausibility_.ofRepaired(*item) + staff, *item});
}

void Explanations::collectRepairs(std::size_t offset) {
  constexpr std::size_t shortest = 3 * bytesPerWord;
  if (file_.size() - offset < shortest || chains_[offset] >= longChain ||
      forwardEnd_[offset] < forwardLoss_[offset] + chainOverLoss) {
    return;
  }
  if (!ItemType(ByteCursor::floatAt(file_, offset + bytesPerWord)).hasText()) {
    for (int length = 2; length <= parameterCount; ++length) {
      addRepair(offset, length);
    }
    return;
  }
  for (int length = textHeadWords + 1; length <= longestRepairedText; ++length) {
    const std::size_t chunk = offset + bytesPerWord * static_cast<std::size_t>(length);
    const auto isText = [](char c) { return static_cast<unsigned char>(c) >= ' '; };
    if (chunk + bytesPerWord > file_.size() || !std::ranges::all_of(file_.substr(chunk, bytesPerWord), isText)) {
      return;
    }
    addRepair(offset, length);
  }
}

/// Adds what can follow the end of an item, other than another item.
void Explanations::leaveForward(std::size_t offset) {
  add(forwardLoss_[offset], forwardEnd_[offset] + lossAt(offset));
  collectRepairs(offset);
  const std::size_t first = offset == 0 ? 0 : repairsEnd_[offset - 1];
  for (std::size_t i = first; i < repairs_.size(); ++i) {
    reach(repairs_[i].end, forwardEnd_[offset] + repairs_[i].weight, repairs_[i].item);
  }
}

/// Adds the weight of all explanations whose last item this is.
void Explanations::reach(std::size_t end, double weight, const Candidate& item) {
  if (weight > forwardEnd_[end]) {
    before_[end] = candidates_.at(item.start);
  }
  add(forwardEnd_[end], weight);
  if (const Candidate* next = candidates_.at(end)) {
    add(forwardItem_[end], weight + plausibility_.ofNext(item, *next));
  }
}

void Explanations::sumForward() {
  forwardLoss_[0] = loss;
  if (file_.size() >= headerBytes) {
    forwardEnd_[headerBytes] = 0;
  }
  for (std::size_t offset = 0; offset <= file_.size(); ++offset) {
    if (offset > 0) {
      add(forwardLoss_[offset], forwardLoss_[offset - 1]);
    }
    if (forwardEnd_[offset] != impossible) {
      leaveForward(offset);
    }
    repairsEnd_[offset] = repairs_.size();
    const Candidate* item = candidates_.at(offset);
    if (item == nullptr) {
      continue;
    }
    const double start = offset == headerBytes ? sum(0, forwardLoss_[offset]) : forwardLoss_[offset];
    add(forwardItem_[offset], start + plausibility_.ofFirst(*item));
    reach(item->end, forwardItem_[offset] + weights_[offset], *item);
  }
}

double Explanations::leaveBackward(std::size_t offset) const {
  double total = sum(endAt(offset), lossAt(offset) + backwardLoss_[offset]);
  const std::size_t first = offset == 0 ? 0 : repairsEnd_[offset - 1];
  for (std::size_t i = first; i < repairsEnd_[offset]; ++i) {
    const Repair& repair = repairs_[i];
    add(total, repair.weight + backwardEnd_[repair.end]);
    if (const Candidate* next = candidates_.at(repair.end)) {
      add(total, repair.weight + plausibility_.ofNext(repair.item, *next) + backwardItem_[repair.end]);
    }
  }
  return total;
}

void Explanations::sumBackward() {
  for (std::size_t offset = file_.size() + 1; offset-- > 0;) {
    double& inLoss = backwardLoss_[offset];
    inLoss = offset == file_.size() ? 0 : backwardLoss_[offset + 1];
    if (isTrailerAt(file_, offset)) {
      add(inLoss, trailerSeen);
    }
    if (const Candidate* item = candidates_.at(offset)) {
      double& weight = backwardItem_[offset];
      weight = backwardEnd_[item->end];
      if (const Candidate* next = candidates_.at(item->end)) {
        add(weight, plausibility_.ofNext(*item, *next) + backwardItem_[item->end]);
      }
      weight += weights_[offset];
      add(inLoss, plausibility_.ofFirst(*item) + weight);
    }
    backwardEnd_[offset] = leaveBackward(offset);
  }
}

std::vector<double> Explanations::likelihoods() {
  sumForward();
  sumBackward();
  double all = loss + backwardLoss_[0];
  if (file_.size() >= headerBytes) {
    add(all, backwardEnd_[headerBytes]);
    if (const Candidate* first = candidates_.at(headerBytes)) {
      add(all, plausibility_.ofFirst(*first) + backwardItem_[headerBytes]);
    }
  }
  std::vector<double> shares;
  for (const Candidate& item : candidates_.all()) {
    shares.push_back(std::exp(std::min(0.0, forwardItem_[item.start] + backwardItem_[item.start] - all)));
  }
  return shares;
}

}  // namespace kiv::repair
