#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_host.h"

namespace kiv::test {

/// What a run asks of the disk.
enum class Operation { openInput, read, openOutput, write, replaceFile, deleteFile, listFolder, currentFolder };

/// One call, with the file or folder it is about; "" for the current folder.
struct FileCall {
  Operation operation = Operation::openInput;
  std::string name;
  std::size_t messagesBefore = 0;  ///< how many boxes had been shown
};

void PrintTo(const FileCall& call, std::ostream* out);

enum class Trouble {
  fails,
  shortens,  ///< one byte is read; half of what is to be written is, and then the disk is full. Nothing else suffers.
};

/// Which call goes wrong, and how.
struct Order {
  int call = 0;  ///< counted from 1; 0 is none
  bool onward = false;
  Trouble trouble = Trouble::fails;
};

/// The text with which the disk refuses what is to be written.
inline const std::string noSpace = "No space left on device";

/// What one read gives at most, so that a small file is read in several calls.
inline constexpr std::size_t pieceOfFailingHost = 200;

/// A host in memory that records every call about files and folders, hands out its files in small pieces, and fails on
/// order.
class FailingHost : public FakeHost {
 public:
  Order order;
  std::vector<FileCall> fileCalls;

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& listed) override;
  std::string currentFolder() override;

  /// Takes note of a call. What goes wrong with it, nullopt when nothing does.
  std::optional<Trouble> troubleAt(Operation operation, const std::string& name);

 private:
  bool fails(Operation operation, const std::string& name) { return troubleAt(operation, name) == Trouble::fails; }
};

}  // namespace kiv::test
