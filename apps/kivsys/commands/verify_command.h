#pragma once

#include <optional>
#include <string>

#include "apps/kivsys/layout/listed_conversion.h"
#include "apps/kivsys/selection/selection.h"
#include "messages/console_words.h"
#include "platform/console/console_system.h"
#include "verify/verify.h"

namespace kiv {

/// What the user wants proved.
struct VerifyOptions {
  Selection selection;
  std::string result;    ///< the first result file as it was typed; "" for the one beside the first page
  std::string manifest;  ///< the file for the digests as it was typed; "" for none
  bool fit = false;      ///< prove rest staves, braces and brackets that fit the music
  bool json = false;
  bool keepGoing = false;  ///< leave out the pages that a conversion would have skipped
};

/// Proves a conversion that has been made, and prints what was found. Returns the program's exit status.
int runVerify(const VerifyOptions& given);

/// Proves the conversion of the pages in a names file, with its table of instruments if it had one.
proof::Verification verificationOf(ConsoleHost& console, const std::string& namesFile,
                                   proof::ConversionToProve conversion, const ListedConversion& listed);
/// "PROVED=YES" or "PROVED=NO", the counts, and the findings, a line each.
std::string asText(const proof::Verification& verification, const FileNamer& nameOf);

}  // namespace kiv
