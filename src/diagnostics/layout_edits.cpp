#include "diagnostics/layout_edits.h"

#include <algorithm>
#include <map>

namespace kiv {
namespace {

using Layout = std::vector<std::int16_t>;

/// The lengths of the longest common subsequences of what is left of two layouts from each pair of indices on.
class CommonLengths {
 public:
  CommonLengths(const Layout& a, const Layout& b) : columns_(b.size() + 1), lengths_((a.size() + 1) * columns_) {
    for (std::size_t i = a.size(); i-- > 0;) {
      for (std::size_t j = b.size(); j-- > 0;) {
        lengths_[i * columns_ + j] =
            a[i] == b[j] ? static_cast<std::uint16_t>(at(i + 1, j + 1) + 1) : std::max(at(i + 1, j), at(i, j + 1));
      }
    }
  }

  std::uint16_t at(std::size_t i, std::size_t j) const { return lengths_[i * columns_ + j]; }

 private:
  std::size_t columns_;
  std::vector<std::uint16_t> lengths_;  // a table holds 5000 items, and so does a layout
};

/// The indices of what does not stay.
struct Differences {
  std::vector<std::size_t> out;  // in the common layout
  std::vector<std::size_t> in;   // in the other one
};

Differences differences(const Layout& common, const Layout& other) {
  const std::size_t shorter = std::min(common.size(), other.size());
  std::size_t head = 0;
  while (head < shorter && common[head] == other[head]) {
    ++head;
  }
  std::size_t tail = 0;
  while (tail < shorter - head && common[common.size() - 1 - tail] == other[other.size() - 1 - tail]) {
    ++tail;
  }
  const auto middle = [&](const Layout& layout) {
    return Layout(layout.begin() + static_cast<std::ptrdiff_t>(head), layout.end() - static_cast<std::ptrdiff_t>(tail));
  };
  const Layout a = middle(common);
  const Layout b = middle(other);
  const CommonLengths lengths(a, b);
  Differences indices;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && a[i] == b[j]) {
      ++i;
      ++j;
    } else if (j == b.size() || (i < a.size() && lengths.at(i + 1, j) >= lengths.at(i, j + 1))) {
      indices.out.push_back(head + i++);
    } else {
      indices.in.push_back(head + j++);
    }
  }
  return indices;
}

}  // namespace

std::vector<LayoutEdit> layoutEdits(const Layout& common, const Layout& other) {
  const Differences indices = differences(common, other);
  std::map<std::int16_t, int> outs;
  for (const std::size_t i : indices.out) {
    ++outs[common[i]];
  }
  std::map<std::int16_t, int> staves;
  for (const std::int16_t instrument : other) {
    ++staves[instrument];
  }
  std::vector<LayoutEdit> ins;
  std::map<std::int16_t, int> moved;
  for (const std::size_t j : indices.in) {
    const std::int16_t instrument = other[j];
    const auto out = outs.find(instrument);
    if (out != outs.end() && out->second > 0) {
      --out->second;
      ++moved[instrument];
      ins.push_back({DeviationKind::moved, instrument, j});
    } else {
      ins.push_back({staves[instrument] > 1 ? DeviationKind::duplicate : DeviationKind::extra, instrument, j});
    }
  }
  std::vector<LayoutEdit> edits;
  for (const std::size_t i : indices.out) {
    const std::int16_t instrument = common[i];
    if (moved[instrument]-- <= 0) {
      edits.push_back({DeviationKind::missing, instrument, std::nullopt});
    }
  }
  edits.insert(edits.end(), ins.begin(), ins.end());
  return edits;
}

}  // namespace kiv
