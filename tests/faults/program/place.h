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

/// A folder for one run of the console program, gone with this object: the pages in m, the results in out, report and
/// verdict in run, what the program keeps for itself in tmp.
class Place {
 public:
  /// The folder is made below the given one, or below that for temporary files.
  explicit Place(const Files& files, const std::filesystem::path& below = std::filesystem::temp_directory_path());
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;
  ~Place();

  const std::filesystem::path& path() const { return path_; }
  Files files() const;
  /// Makes these all the files that there are.
  void reset(const Files& files) const;
  void write(const std::string& name, const std::string& content) const;
  /// Takes the right to make and delete files in the folder, and makes the program run as somebody whom that concerns.
  void lock(const std::string& folder);
  /// Runs kivsys in the folder; under the library of failing calls when there are settings for it.
  Ended kivsys(const std::vector<std::string>& arguments, const Faults& faults = {}) const;
  /// As kivsys makes it.
  std::string page(const std::string& text) const;

 private:
  std::filesystem::path path_;
  std::filesystem::path outside_;  // what the program prints
  bool locked_ = false;
};

/// The arguments of an analysis or a conversion of pages in m.
std::vector<std::string> analysisOf(const std::vector<std::string>& pages);
std::vector<std::string> conversionOf(const std::vector<std::string>& pages);

}  // namespace kiv::test
