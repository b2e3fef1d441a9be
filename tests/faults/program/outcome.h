#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv::test {

/// A call of the C library, with its file as the program named it.
struct Call {
  std::string name;  ///< "open", or "create" when it is opened for writing
  std::string file;
};

/// The calls in the log of a run.
std::vector<Call> callsIn(const std::string& log);

/// The temporary files of the program.
bool isOwnNamesFile(const std::string& file);
bool isBesideResult(const std::string& file);
/// What a run keeps of the files that it replaces.
bool isKept(const std::string& file);

/// The last lines on standard error of a run that ends with status 1; nullopt if the failure has no effect.
using Outcome = std::optional<std::string>;

/// The expected outcome when the call with the index `failing` fails. The calls are those of a run without faults;
/// errorText is the platform's text for the failure.
Outcome outcomeOf(const std::vector<Call>& calls, std::size_t failing, bool converts, const std::string& errorText);

}  // namespace kiv::test
