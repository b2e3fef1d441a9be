#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// A page that an analysis would end over.
struct SkippedPage {
  std::vector<std::string> files;  ///< its files; of a name that is no page, that name
  std::string file;                ///< the file that the message is about
  std::string message;             ///< the critical message
};

/// What a names file lists, page by page.
struct PageJudgement {
  std::string names;      ///< the names file without the skipped pages
  std::size_t pages = 0;  ///< pages that an analysis can go through
  std::vector<SkippedPage> skipped;
};

/// Tries every name and page of a names file by itself, in the very procedures of an analysis and on tables of its own.
/// Nothing is written, and no message shown. Every page is read once.
PageJudgement judgePages(Host& host, const std::string& namesFile);

}  // namespace kiv
