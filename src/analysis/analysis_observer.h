#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "mus/item_table.h"
#include "mus/page_walker.h"

namespace kiv {

/// Is given the items of a page file by whoever walks over it.
class FileObserver {
 public:
  FileObserver() = default;
  FileObserver(const FileObserver&) = delete;
  FileObserver& operator=(const FileObserver&) = delete;
  virtual ~FileObserver() = default;

  /// An item of the file: each staff, hidden ones too, clef, key signature, barline, rest, cue marker and text. Items
  /// of other types may be left out.
  virtual void addItem(const PageWalker& page) = 0;
  /// Lets the walk skip items of these types, which come next. An observer that looks at some of them, too, does so
  /// here.
  virtual void skipItems(PageWalker& page, TypeSet types) { page.skipItems(types); }
};

/// Is given what an analysis reads, while it reads it, so that nobody needs to read the pages and the report again.
class AnalysisObserver {
 public:
  AnalysisObserver() = default;
  AnalysisObserver(const AnalysisObserver&) = delete;
  AnalysisObserver& operator=(const AnalysisObserver&) = delete;
  virtual ~AnalysisObserver() = default;

  /// An observer of a file before the file's turn has come; null for none. It is given all items, as far as the file
  /// can be read. Another thread may call this while the analysis calls the others, and uses the observer first.
  virtual std::unique_ptr<FileObserver> observerAhead() const { return nullptr; }
  /// A page file, full name. Returns who is given its items, which this keeps; null where the observer ahead, which has
  /// been given them all, is enough. The bytes, which may be those of a broken page, are valid until the file's end.
  virtual FileObserver* beginFile(const std::string& musFileName, std::string_view bytes,
                                  std::unique_ptr<FileObserver> ahead) = 0;
  /// The file has been read to its end.
  virtual void endFile() = 0;
  /// The page of these files has been analyzed. The table has its staves, in these rows, as the report lists them.
  virtual void endPage(const ItemTable& table, const std::vector<int>& staves) = 0;
};

}  // namespace kiv
