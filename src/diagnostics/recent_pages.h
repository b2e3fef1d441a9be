#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "diagnostics/system_facts.h"
#include "mus/format.h"
#include "platform/file_buffer.h"
#include "platform/files.h"

namespace kiv {

/// What was made of the bytes of the page files of one system, so that the next one of the same page need not read them
/// again. Files must outlive it.
template <typename Content>
class RecentPages {
 public:
  /// Makes the content of a page file. The bytes, readableBytes of them at most, are valid during the call only.
  using Make = std::function<Content(std::string_view bytes)>;

  RecentPages(Files& files, Make make) : files_(files), make_(std::move(make)) {}

  /// Forgets the files that the system has no staff in. As a page has its systems next to each other, few are read
  /// twice.
  void keepOnlyFilesOf(const SystemFact& system) {
    std::erase_if(pages_, [needed = filesOf(system)](const auto& page) { return !needed.contains(page.first); });
  }
  /// Of a file that cannot be read, what was made of no bytes. Valid until the file is forgotten.
  const Content& page(const std::string& name) {
    const auto known = pages_.find(name);
    if (known != pages_.end()) {
      return known->second;
    }
    const std::string_view bytes = buffer_.read(files_, name, readableBytes).value_or("");
    return pages_.emplace(name, make_(bytes)).first->second;
  }

 private:
  Files& files_;
  Make make_;
  FileBuffer buffer_;
  std::map<std::string, Content> pages_;
};

}  // namespace kiv
