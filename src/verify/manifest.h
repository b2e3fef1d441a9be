#pragma once

#include <string>
#include <vector>

namespace kiv {

/// A file and the digest of its content when it was read.
struct DigestedFile {
  std::string name;
  std::string sha256;  ///< 64 hexadecimal digits

  bool operator==(const DigestedFile&) const = default;
};

/// A line for each file as `sha256sum -c` reads it. The digest of a name with a backslash or a line end is marked, and
/// the name written with escapes, so that a Windows name comes out right too.
std::string manifestText(const std::vector<DigestedFile>& files);

}  // namespace kiv
