#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "verify/page_items.h"

namespace kiv::proof {

/// Loads a page file by its full name.
using PageLoader = std::function<LoadedPage(const std::string&)>;

/// Values by the staff. Items of one staff mostly follow one another, so the value asked for last is found at once.
template <typename Value>
class ByStaff {
 public:
  ByStaff() = default;
  ByStaff(const ByStaff&) = delete;
  ByStaff& operator=(const ByStaff&) = delete;
  ~ByStaff() = default;

  /// The value of this staff, which must not be NaN; a new one for a new staff.
  Value& operator[](float staff) {
    if (last_ == nullptr || staff != lastStaff_) {
      last_ = &values_[staff];
      lastStaff_ = staff;
    }
    return *last_;
  }
  auto begin() const { return values_.begin(); }
  auto end() const { return values_.end(); }

 private:
  std::unordered_map<float, Value> values_;
  float lastStaff_ = 0;
  Value* last_ = nullptr;
};

/// The items of page files by their staves. A file is read when it is asked for first, and again when it was forgotten.
class InputPages {
 public:
  explicit InputPages(PageLoader load) : load_(std::move(load)) {}

  /// The items of a staff in the order of the file; none when the file has no such staff or cannot be read. They are
  /// valid until the file is forgotten.
  const std::vector<PageItem>& staff(const std::string& file, float number);
  /// Forgets all other files than these.
  void keepOnly(const std::set<std::string_view>& files);

 private:
  using Page = ByStaff<std::vector<PageItem>>;

  static void divide(LoadedPage loaded, Page& page);

  PageLoader load_;
  std::map<std::string, Page> pages_;
};

}  // namespace kiv::proof
