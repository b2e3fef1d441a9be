#pragma once

#include <string>

namespace kiv {

/// Makes a folder in the user's one for temporary files, which only the user can enter, and returns its path on the
/// disk; "" when that fails.
std::string makeTemporaryFolder();

}  // namespace kiv
