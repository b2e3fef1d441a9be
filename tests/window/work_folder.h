#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A new folder for one test: the current one for as long as this lives, and deleted with its content afterwards.
class WorkFolder {
 public:
  /// Its name ends with the given one.
  explicit WorkFolder(const std::string& name = "work");
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder();

  /// The folder's own name, without a backslash at its end.
  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + "\\" + name; }

 private:
  std::string path_;
  std::string before_;
};

// --- names below are full ones or lie in the current folder ---

void writeFile(const std::string& name, std::string_view content);
/// The file's content; "(no file)" when there is none.
std::string readFileContent(const std::string& name);
bool exists(const std::string& name);
void makeFolder(const std::string& name);
/// The entries of a folder, sorted, folders included.
std::vector<std::string> namesIn(const std::string& folder);

/// The full name of a file of the build, named as seen from the folder of the running test program.
std::string builtFile(const std::string& name);
/// Puts a copy of one of the test's own small programs into the current folder.
void bringProgram(const std::string& name, const std::string& copy);

}  // namespace kiv::test
