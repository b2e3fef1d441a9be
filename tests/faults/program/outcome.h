#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kiv::test {

/// A call of the C library, with the file that it was about as the library was asked for it.
struct Call {
  std::string name;  ///< "open", or "create" when it is opened for writing
  std::string file;
};

/// The calls in the log of a run.
std::vector<Call> callsIn(const std::string& log);

/// The files that the program makes for itself.
bool isOwnNamesFile(const std::string& file);
bool isBesideResult(const std::string& file);

/// The last lines on standard error of a run that ends with status 1; nullopt when nobody notices.
using Outcome = std::optional<std::string>;

/// What is promised when the call fails, which is one of those that an undisturbed run makes. errorText is the
/// platform's own for the failure.
Outcome outcomeOf(const std::vector<Call>& calls, std::size_t failing, bool converts, const std::string& errorText);

}  // namespace kiv::test
