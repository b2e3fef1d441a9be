#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "messages/message.h"
#include "platform/host.h"

namespace kiv {

/// A page that an analysis would end over.
struct SkippedPage {
  std::vector<std::string> files;  ///< its files; of a name that is no page, that name
  Message message;                 ///< the critical message; its location names the file that it is about

  /// The file that the message is about; the first one when that is unknown.
  std::string namedFile() const;
  /// The other files of the page, which may be whole.
  std::vector<std::string> otherFiles() const;
  bool operator==(const SkippedPage&) const = default;
};

/// What a names file lists, page by page.
struct PageValidation {
  std::string names;      ///< the names file without the skipped pages
  std::size_t pages = 0;  ///< pages that an analysis can go through
  std::vector<SkippedPage> skipped;
  /// By the name of each valid page file, how many lines before its own are skipped.
  std::map<std::string, std::size_t> skippedBefore;
};

/// Validates every name and page of a names file separately, in the very procedures of an analysis and on tables of its
/// own. Nothing is written; the user sees the progress and no message. Every page is read once.
PageValidation validatePages(const Host& host, const std::string& namesFile);

}  // namespace kiv
