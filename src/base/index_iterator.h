#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace kiv {

/// Goes through what has numbers from 0 on: the elements of a container that makes them when they are asked for. The
/// container must outlive it.
template <typename Container>
class IndexIterator {
 public:
  using iterator_category = std::input_iterator_tag;  // of an iterator that gives no references
  using iterator_concept = std::forward_iterator_tag;
  using reference = decltype(std::declval<const Container&>()[0]);
  using value_type = std::remove_cvref_t<reference>;
  using difference_type = std::ptrdiff_t;
  using pointer = void;

  IndexIterator() = default;
  IndexIterator(const Container& container, std::size_t index) : container_(&container), index_(index) {}

  reference operator*() const { return (*container_)[index_]; }
  IndexIterator& operator++() {
    ++index_;
    return *this;
  }
  IndexIterator operator++(int) {  // NOLINT(cert-dcl21-cpp): a constant iterator could not be moved from
    IndexIterator old = *this;
    ++index_;
    return old;
  }
  bool operator==(const IndexIterator& other) const { return index_ == other.index_; }

 private:
  const Container* container_ = nullptr;
  std::size_t index_ = 0;
};

}  // namespace kiv
