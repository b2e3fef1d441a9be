#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "mus/format.h"
#include "platform/files.h"

namespace kiv::report {

/// What was made of the bytes of the page files of one system, so that the next one of the same page need not read them
/// again. Files must outlive it.
template <typename Content>
class RecentPages {
 public:
  using Make = std::function<Content(const std::string& bytes)>;

  RecentPages(Files& files, Make make) : files_(files), make_(std::move(make)) {}

  /// The files of the system that follows: others are forgotten.
  void keepOnly(const std::set<std::string>& names) {
    std::erase_if(pages_, [&](const auto& page) { return !names.contains(page.first); });
  }
  /// Of a file that cannot be read, what was made of no bytes. Valid until the file is forgotten.
  const Content& page(const std::string& name) {
    const auto known = pages_.find(name);
    if (known != pages_.end()) {
      return known->second;
    }
    return pages_.emplace(name, make_(readWhole(files_, name, readableBytes).value_or(""))).first->second;
  }

 private:
  Files& files_;
  Make make_;
  std::map<std::string, Content> pages_;
};

}  // namespace kiv::report
