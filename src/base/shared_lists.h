#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

#include "base/hash_index.h"
#include "base/number_hash.h"

namespace kiv {

/// Lists of which most are alike. Each is a number, and what lists have in common from their starts is kept once.
template <typename Element, typename Hash = std::hash<Element>>
class SharedLists {
 public:
  static constexpr std::uint32_t emptyList = 0;

  /// The list with one more element at its end.
  std::uint32_t append(std::uint32_t list, const Element& element) {
    const auto isIt = [&](std::uint32_t end) { return ends_[end].before == list && ends_[end].last == element; };
    const auto hashOf = [this](std::uint32_t end) { return hashOfEnd(ends_[end]); };
    return index_.findOrAdd(hashOfEnd({list, element}), isIt, hashOf, [&] { ends_.push_back({list, element}); }) + 1;
  }

  /// Calls visit for each element, the last one first.
  template <typename Visit>
  void visitFromEnd(std::uint32_t list, Visit visit) const {
    for (; list != emptyList; list = ends_[list - 1].before) {
      visit(ends_[list - 1].last);
    }
  }
  /// Calls visit for each element that a list has, once for all those lists that have it in common.
  template <typename Visit>
  void visitAll(Visit visit) const {
    for (const End& end : ends_) {
      visit(end.last);
    }
  }
  std::vector<Element> elements(std::uint32_t list) const {
    std::vector<Element> elements;
    visitFromEnd(list, [&](const Element& element) { elements.push_back(element); });
    std::reverse(elements.begin(), elements.end());
    return elements;
  }

 private:
  /// The end of the list whose number is one more than its own.
  struct End {
    std::uint32_t before = emptyList;
    Element last;
  };
  static std::size_t hashOfEnd(const End& end) { return NumberHash().add(Hash()(end.last)).add(end.before).value(); }

  std::deque<End> ends_;  // not doubled, and never moved
  HashIndex index_;
};

}  // namespace kiv
