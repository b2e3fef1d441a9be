#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/fake_host.h"

namespace kiv::test {

/// What a run does with its files.
enum class Operation { openInput, read, openOutput, write, replaceFile, deleteFile, listFolder, currentFolder };

/// One call, with the file or folder it is about; "" for the current folder.
struct FileCall {
  Operation operation = Operation::openInput;
  std::string name;
  std::size_t messagesBefore = 0;  ///< the number of messages shown before it
};

void PrintTo(const FileCall& call, std::ostream* out);

enum class Failure {
  fails,
  shortens,  ///< one byte is read; half of what is to be written is, and then the disk is full. Nothing else suffers.
};

/// Which call fails, and how.
struct InjectedFault {
  int call = 0;           ///< counted from 1; 0 is none
  bool persists = false;  ///< all later calls fail as well
  Failure failure = Failure::fails;
};

/// The platform's text where nothing more can be written.
inline const std::string noSpace = "No space left on device";

/// What one read gives at most, so that a small file is read in several calls.
inline constexpr std::size_t largestRead = 200;

/// Files that record every call, hand out their contents in small pieces, and fail where a fault is injected.
class FailingFiles : public Files {
 public:
  /// Files and messages, those shown to the user, must outlive this object.
  FailingFiles(Files& below, const std::vector<Message>& messages) : below_(below), messages_(messages) {}

  InjectedFault fault;
  std::vector<FileCall> calls;

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& folder) override;
  std::string currentFolder() override;
  std::optional<std::string> shortName(const std::string& path) override { return below_.shortName(path); }

  /// Records a call. Returns how it fails, nullopt when it does not.
  std::optional<Failure> record(Operation operation, const std::string& name);

 private:
  bool fails(Operation operation, const std::string& name) { return record(operation, name) == Failure::fails; }

  Files& below_;
  const std::vector<Message>& messages_;
};

/// A host in memory whose files fail where a fault is injected.
class FailingHost : public FakeHost {
 public:
  operator Host() { return {failing, *this, *this, *this}; }  // NOLINT(google-explicit-constructor)

  FailingFiles failing{*this, messages};
};

}  // namespace kiv::test
