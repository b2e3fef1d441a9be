#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/kivsys/safety/file_kinds.h"
#include "apps/kivsys/safety/input_files.h"
#include "platform/console/native_system.h"

namespace kiv {

/// The output file of this name is standard output.
inline constexpr const char* standardOutput = "-";

/// Whether what was typed is standard output, by the name "-" or by that of the system.
bool isStandardOutput(const std::string& typed);

/// The full name of an output file that was typed; standard output and "" stay as they are.
std::string outputName(NativeSystem& system, const std::string& typed);

/// A file that the user asked for.
struct OutputFilePlan {
  std::string what;  ///< "drawing"
  std::string name;  ///< as the core writes it; "-" is standard output, "" for none
  OutputKind kind = OutputKind::drawing;
};

/// Why the file may not be written: it is an input, a page or another file that is not of its kind. None: it may.
std::vector<std::string> refusalsOfOutput(NativeSystem& system, const OutputFilePlan& output, const InputFiles& inputs);

/// What becomes of a file that is there when another one is to take its name.
enum class OldFile {
  replaced,        ///< if it is of the same kind still
  alwaysReplaced,  ///< whatever it is
  kept,            ///< also one that has only just come
};

/// Writes the content. A file is replaced as a whole; devices, pipes and standard output are written to. Returns the
/// failure's text.
[[nodiscard]] std::optional<std::string> writeOutput(NativeSystem& system, const OutputFilePlan& output,
                                                     std::string_view content, OldFile oldFile = OldFile::replaced);

/// The line about a file that could not be written: its name for users, the system's reason, and what to do when its
/// folder is missing, which the path on the disk shows.
std::string notWritten(const std::string& shown, const std::string& path, const std::string& failure);

}  // namespace kiv
