#pragma once

#include <memory>
#include <string>

#include "messages/run_time_errors.h"
#include "mus/item_table.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/files.h"

namespace kiv {

/// A page file read into memory in one go, and the walk over its items.
class MusReader {
 public:
  /// Opens and reads the file. One that cannot be opened or is shorter than its header makes the first readItem a
  /// structural error.
  void openMUSfile(Files& files, const std::string& musFileName);
  /// The same for a file that is open already, or null. It is closed when this returns.
  void openMUSfile(const std::string& musFileName, std::unique_ptr<InputFile> file);

  /// Finds the next item or the end. An item with more than 20 parameters ends the program, so that the status is
  /// never ReadStatus::tooManyParameters.
  ReadStatus readItem() {
    const ReadStatus status = page_.findItem();
    if (status == ReadStatus::tooManyParameters) {
      endProgram(messages::subscriptOutOfRange(location()));
    }
    return status;
  }

  /// The item that readItem found, and how far the walk has come.
  const PageWalker& page() const { return page_; }
  /// The same, for others that skip items or go to one.
  PageWalker& page() { return page_; }

  /// The file and the number of the item found last, or begun: what an error during reading is about.
  Location location() const;

 private:
  std::string musFileName_;
  FileBuffer buffer_;
  PageWalker page_;
};

/// Loads the whole page file into the table, which is cleared first. A structural error ends the program.
void readFile(Files& files, const std::string& musFileName, ItemTable& table);

}  // namespace kiv
