#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace kiv::test {

/// How a program ended, and what it printed.
struct Ended {
  int status = 0;  ///< its exit status; minus the signal when it was killed
  std::string out;
  std::string error;
};

/// Files by their names below a folder, "m/X001.MUS".
using Files = std::map<std::string, std::string>;

/// Settings for the library of failing calls, by name: {"CALL", "3"}.
using Faults = std::map<std::string, std::string>;

/// A folder for one run of the console program, deleted with this object: the pages are in m, the results in out,
/// report and verdict in run, and the temporary files of the program in tmp.
class WorkingFolder {
 public:
  /// Creates the folder in the given one, or in that for temporary files.
  explicit WorkingFolder(const Files& files,
                         const std::filesystem::path& below = std::filesystem::temp_directory_path());
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder();

  const std::filesystem::path& path() const { return path_; }
  Files files() const;
  /// Replaces all files by these, and forgets the state that runs have kept of themselves.
  void reset(const Files& files) const;
  void write(const std::string& name, const std::string& content) const;
  /// Makes the folder read-only, and runs the program as a user whom that restricts.
  void lock(const std::string& folder);
  /// Runs kivsys in the folder, with the library of failing calls if there are settings for it.
  Ended kivsys(const std::vector<std::string>& arguments, const Faults& faults = {}) const;
  /// The page that kivsys builds from the text.
  std::string page(const std::string& text) const;

 private:
  std::filesystem::path path_;
  std::filesystem::path outside_;  // what the program prints
  bool locked_ = false;
};

/// The arguments of an analysis or a conversion of pages in m. The conversion makes its calls in the same order each
/// time, unless it writes in the background.
std::vector<std::string> analysisOf(const std::vector<std::string>& pages);
std::vector<std::string> conversionOf(const std::vector<std::string>& pages);
std::vector<std::string> backgroundConversionOf(const std::vector<std::string>& pages);

}  // namespace kiv::test
