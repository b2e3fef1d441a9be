#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "mus/format.h"
#include "platform/files.h"

namespace kiv::report {

/// What was made of the bytes of the page files that were read last, so that the systems of a page read it once. Files
/// must outlive it.
template <typename Content>
class RecentPages {
 public:
  using Make = std::function<Content(const std::string& bytes)>;

  RecentPages(Files& files, Make make) : files_(files), make_(std::move(make)) {}

  /// Of a file that cannot be read, what was made of no bytes. Valid until another page is asked for.
  const Content& page(const std::string& name) {
    constexpr std::size_t mostKept = 32;  // a page has no more files than letters
    const auto known = pages_.find(name);
    if (known != pages_.end()) {
      return known->second;
    }
    if (pages_.size() >= mostKept) {
      pages_.clear();
    }
    return pages_.emplace(name, make_(readWhole(files_, name, readableBytes).value_or(""))).first->second;
  }

 private:
  Files& files_;
  Make make_;
  std::map<std::string, Content> pages_;
};

}  // namespace kiv::report
