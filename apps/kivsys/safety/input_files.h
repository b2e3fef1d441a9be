#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "apps/kivsys/selection/selected_pages.h"
#include "platform/native_file.h"

namespace kiv {

/// The files that a run reads and must not write, known by their identity.
class InputFiles {
 public:
  InputFiles() = default;
  /// The pages of a selection, also those that are skipped, their list and their tables. A page is the file that it was
  /// when it was found, or when refreshIdentities was called.
  explicit InputFiles(const SelectedPages& pages);

  /// Adds a file by its path on the disk, if it is there.
  void add(const std::string& path) { add(FoundFile{"", path}); }
  void add(const FoundFile& file);
  /// Adds the file that standard input is, if it is one.
  void addStandardInput();
  /// Adds an input as it was typed: a file, or "-" for standard input.
  void addTyped(NativeSystem& system, const std::string& typed);
  /// The input that this path leads to, as it was added; nullopt when it leads to none.
  std::optional<std::string> find(const std::string& path) const;

  /// Why an output, named by its path on the disk, cannot be written: it is an input. Nullopt when it is none.
  std::optional<std::string> refusal(const std::string& output, const std::string& path) const;
  /// The same for an output that replaces what is there: a device or a pipe is not replaced either.
  std::optional<std::string> refusalToReplace(const std::string& output, const std::string& path) const;
  /// The refusals of all these outputs, each with what it is.
  std::vector<std::string> refusals(const std::vector<std::pair<std::string, std::string>>& outputs) const;

 private:
  std::map<FileIdentity, std::string> paths_;
};

/// Report and verdict in the folder of a run, each with what it is and its path on the disk.
std::vector<std::pair<std::string, std::string>> analysisOutputs(NativeSystem& system, const std::string& folder);

}  // namespace kiv
