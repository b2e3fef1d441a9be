#include "tests/faults/failing_host.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace kiv::test {
namespace {

class FailingInput : public InputFile {
 public:
  FailingInput(FailingFiles& files, std::string name, std::unique_ptr<InputFile> file)
      : files_(files), name_(std::move(name)), file_(std::move(file)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const auto failure = files_.record(Operation::read, name_);
    if (failure == Failure::fails) {
      return std::nullopt;
    }
    return file_->read(buffer.first(std::min(buffer.size(), failure ? 1 : largestRead)));
  }

 private:
  FailingFiles& files_;
  std::string name_;
  std::unique_ptr<InputFile> file_;
};

class FailingOutput : public OutputFile {
 public:
  FailingOutput(FailingFiles& files, std::string name, std::unique_ptr<OutputFile> file)
      : files_(files), name_(std::move(name)), file_(std::move(file)) {}

  std::optional<std::string> write(std::string_view bytes) override {
    const auto failure = files_.record(Operation::write, name_);
    if (!failure) {
      return file_->write(bytes);
    }
    if (failure == Failure::shortens) {
      static_cast<void>(file_->write(bytes.substr(0, bytes.size() / 2)));
    }
    return noSpace;
  }

 private:
  FailingFiles& files_;
  std::string name_;
  std::unique_ptr<OutputFile> file_;
};

}  // namespace

void PrintTo(const FileCall& call, std::ostream* out) {
  constexpr const char* names[] = {"open for reading", "read", "open for writing", "write", "replace",
                                   "delete",           "list", "current folder"};
  *out << names[static_cast<int>(call.operation)] << ' ' << call.name;
}

std::optional<Failure> FailingFiles::record(Operation operation, const std::string& name) {
  calls.push_back({operation, name, messages_.size()});
  const int call = static_cast<int>(calls.size());
  const bool hit = call == fault.call || (fault.persists && fault.call != 0 && call > fault.call);
  return hit ? std::optional(fault.failure) : std::nullopt;
}

std::unique_ptr<InputFile> FailingFiles::openInput(const std::string& name) {
  if (fails(Operation::openInput, name)) {
    return nullptr;
  }
  auto file = below_.openInput(name);
  return file ? std::make_unique<FailingInput>(*this, name, std::move(file)) : nullptr;
}

std::unique_ptr<OutputFile> FailingFiles::openOutput(const std::string& name) {
  if (fails(Operation::openOutput, name)) {
    return nullptr;
  }
  auto file = below_.openOutput(name);
  return file ? std::make_unique<FailingOutput>(*this, name, std::move(file)) : nullptr;
}

std::optional<std::string> FailingFiles::replaceFile(const std::string& name, std::string_view bytes) {
  // A file is replaced whole or not at all, so half of it is as good as nothing.
  return record(Operation::replaceFile, name) ? noSpace : below_.replaceFile(name, bytes);
}

bool FailingFiles::deleteFile(const std::string& name) {
  return !fails(Operation::deleteFile, name) && below_.deleteFile(name);
}

std::vector<FolderEntry> FailingFiles::listFolder(const std::string& folder) {
  return fails(Operation::listFolder, folder) ? std::vector<FolderEntry>{} : below_.listFolder(folder);
}

std::string FailingFiles::currentFolder() {
  return fails(Operation::currentFolder, "") ? "" : below_.currentFolder();
}

}  // namespace kiv::test
