#pragma once

#include <memory>

namespace kiv {

/// The object as what it is; null, and the object is gone, when it is something else.
template <typename Derived, typename Base>
std::unique_ptr<Derived> downcast(std::unique_ptr<Base> object) {
  std::unique_ptr<Derived> derived(dynamic_cast<Derived*>(object.get()));
  if (derived) {
    static_cast<void>(object.release());
  }
  return derived;
}

}  // namespace kiv
