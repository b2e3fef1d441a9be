#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace kiv {

/// A table of corrections that a run has read.
struct CorrectionTable {
  std::string name;       ///< as it was typed; "-" for standard input
  std::string path;       ///< of the disk; "" for standard input
  std::string sha256;     ///< of its bytes
  std::size_t count = 0;  ///< the corrections that are used
};

/// A page that is corrected when it is read.
struct CorrectedPage {
  std::string sha256;                                    ///< of the page as the disk has it
  std::function<std::string(std::string_view)> correct;  ///< gives the corrected page for that page
};

/// The corrections of a run, which change what it reads and no file.
struct PageCorrections {
  std::vector<CorrectionTable> tables;         ///< none for a run that reads its pages as they are
  std::map<std::string, CorrectedPage> pages;  ///< those that change, by their names of the core in upper case
  std::size_t ids = 0;                         ///< that change in all of them
  std::size_t leftOut = 0;  ///< rows of the tables without a new id, or of less confidence than wanted
};

/// Reads a file, which must be the page that was to be corrected, as the corrected page. A file that has become another
/// one ends the program. The name is for the message; the page must outlive the result.
std::unique_ptr<InputFile> openCorrected(std::unique_ptr<InputFile> file, const CorrectedPage& page, std::string name);

}  // namespace kiv
