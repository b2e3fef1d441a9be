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
  struct Page {
    std::unordered_map<float, std::vector<PageItem>> staves;
  };

  static void divide(LoadedPage loaded, Page& page);

  PageLoader load_;
  std::map<std::string, Page> pages_;
};

}  // namespace kiv::proof
