#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kiv::test {

/// What a program that has ended left behind.
struct Ended {
  int status = -1;
  std::string out;
  std::string error;
};

/// A folder for one test, gone with it.
class Workplace {
 public:
  Workplace();
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace();

  const std::filesystem::path& path() const { return path_; }
  /// Where the programs of the test keep their state.
  std::filesystem::path stateFolder() const;
  /// The file's path, or that of the folder when it is "", as the core writes it: backslashes between folders.
  std::string corePath(const std::string& file) const;
  /// The same in capitals, as names from a names file become.
  std::string capitals(const std::string& file) const;
  void write(const std::string& file, const std::string& content) const;
  /// The file's content; "(no file)" when there is none.
  std::string read(const std::string& file) const;
  /// Runs kivsys in a folder of the workplace, with this text on its standard input. Objects that it prints must be
  /// valid by the documented schema.
  Ended kivsys(const std::vector<std::string>& arguments, const std::string& folder = ".",
               const std::string& input = "") const;
  /// Runs a line of a document in a shell that finds kivsys, and in whose variable `examples` is the folder of the
  /// examples. Everything that is printed is in `out`, in its order.
  Ended shell(const std::string& line, const std::string& folder = ".") const;
  /// Runs kivsys with a device as its standard output on which nothing can be written.
  Ended kivsysIntoFullDevice(const std::vector<std::string>& arguments) const;
  /// The same in the folder of the workplace, for an administrator with the rights of an ordinary owner of the files.
  Ended kivsysAsOwner(const std::vector<std::string>& arguments) const;

 private:
  Ended run(const std::string& command, const std::string& folder, const std::string& input) const;

  std::filesystem::path path_;
  std::filesystem::path outside_;  // what the runs print, and the folder for temporary files
};

/// The names of all files in a folder, sorted.
std::vector<std::string> filesIn(const std::filesystem::path& folder);

}  // namespace kiv::test
