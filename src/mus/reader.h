#pragma once

#include <memory>
#include <string>

#include "mus/item_table.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/host.h"

namespace kiv {

/// A page file read into memory in one go, and the walk over its items.
class MusReader {
 public:
  /// Opens and reads the file. One that cannot be opened or is shorter than its header makes the first readItem a
  /// structural error.
  void openMUSfile(Host& host, const std::string& musFileName);
  /// The same for a file that is open already, or null. It is closed when this returns.
  void openMUSfile(const std::string& musFileName, std::unique_ptr<InputFile> file);

  /// Finds the next item or the end. An item with more than 20 parameters ends the program, so that the status is
  /// never ReadStatus::tooManyParameters.
  ReadStatus readItem(Host& host) {
    const ReadStatus status = page_.findItem();
    if (status == ReadStatus::tooManyParameters) {
      host.runTimeError(RunTimeError::subscriptOutOfRange, place());
    }
    return status;
  }

  /// Leaves out the items of these types that come next and are in order.
  void passOver(TypeSet types) { page_.passOver(types); }

  /// The item that readItem found, and how far the walk has come.
  const PageWalker& page() const { return page_; }

  /// "file, item number": what a run-time error during reading was about.
  std::string place() const;

 private:
  std::string musFileName_;
  FileRoom room_;
  PageWalker page_;
};

/// Ends the program over a page file whose item of this number is broken; 0 stands for the file's head.
[[noreturn]] void refusePage(Host& host, const std::string& musFileName, int itemNumber);

/// Loads the whole page file into the table, which is started afresh. A structural error ends the program.
void readFile(Host& host, const std::string& musFileName, ItemTable& table);

}  // namespace kiv
