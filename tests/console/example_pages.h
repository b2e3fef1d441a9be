#pragma once

#include <string>
#include <vector>

#include "tests/console/run_program.h"

namespace kiv::test {

/// Builds the pages of the bundled example in a folder of the workplace, which must be there. Returns their names, in
/// their order, without the folder.
std::vector<std::string> buildExample(const Workplace& place, const std::string& folder = ".");

/// What a document shows below a command: the lines after "    $ COMMAND", indented alike, up to the next command or
/// the end of the block. The document is named from the folder of the documents.
std::string shownAfter(const std::string& document, const std::string& command);
std::string shownInReference(const std::string& command);

/// The text with one name put for another, everywhere.
std::string with(std::string text, const std::string& name, const std::string& other);

}  // namespace kiv::test
