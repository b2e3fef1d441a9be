#include "tests/faults/failing_host.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace kiv::test {
namespace {

class FailingInput : public InputFile {
 public:
  FailingInput(FailingHost& host, std::string name, std::unique_ptr<InputFile> file)
      : host_(host), name_(std::move(name)), file_(std::move(file)) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    const auto trouble = host_.troubleAt(Operation::read, name_);
    if (trouble == Trouble::fails) {
      return std::nullopt;
    }
    return file_->read(room.first(std::min(room.size(), trouble ? 1 : pieceOfFailingHost)));
  }

 private:
  FailingHost& host_;
  std::string name_;
  std::unique_ptr<InputFile> file_;
};

class FailingOutput : public OutputFile {
 public:
  FailingOutput(FailingHost& host, std::string name, std::unique_ptr<OutputFile> file)
      : host_(host), name_(std::move(name)), file_(std::move(file)) {}

  std::optional<std::string> write(std::string_view bytes) override {
    const auto trouble = host_.troubleAt(Operation::write, name_);
    if (!trouble) {
      return file_->write(bytes);
    }
    if (trouble == Trouble::shortens) {
      static_cast<void>(file_->write(bytes.substr(0, bytes.size() / 2)));
    }
    return noSpace;
  }

 private:
  FailingHost& host_;
  std::string name_;
  std::unique_ptr<OutputFile> file_;
};

}  // namespace

void PrintTo(const FileCall& call, std::ostream* out) {
  constexpr const char* names[] = {"open for reading", "read", "open for writing", "write", "replace",
                                   "delete",           "list", "current folder"};
  *out << names[static_cast<int>(call.operation)] << ' ' << call.name;
}

std::optional<Trouble> FailingHost::troubleAt(Operation operation, const std::string& name) {
  fileCalls.push_back({operation, name, messages.size()});
  const int call = static_cast<int>(fileCalls.size());
  const bool hit = call == order.call || (order.onward && order.call != 0 && call > order.call);
  return hit ? std::optional(order.trouble) : std::nullopt;
}

std::unique_ptr<InputFile> FailingHost::openInput(const std::string& name) {
  if (fails(Operation::openInput, name)) {
    return nullptr;
  }
  auto file = FakeHost::openInput(name);
  return file ? std::make_unique<FailingInput>(*this, name, std::move(file)) : nullptr;
}

std::unique_ptr<OutputFile> FailingHost::openOutput(const std::string& name) {
  if (fails(Operation::openOutput, name)) {
    return nullptr;
  }
  auto file = FakeHost::openOutput(name);
  return file ? std::make_unique<FailingOutput>(*this, name, std::move(file)) : nullptr;
}

std::optional<std::string> FailingHost::replaceFile(const std::string& name, std::string_view bytes) {
  // A file is replaced whole or not at all, so half of it is as good as nothing.
  return troubleAt(Operation::replaceFile, name) ? noSpace : FakeHost::replaceFile(name, bytes);
}

bool FailingHost::deleteFile(const std::string& name) {
  return !fails(Operation::deleteFile, name) && FakeHost::deleteFile(name);
}

std::vector<FolderEntry> FailingHost::listFolder(const std::string& listed) {
  return fails(Operation::listFolder, listed) ? std::vector<FolderEntry>{} : FakeHost::listFolder(listed);
}

std::string FailingHost::currentFolder() {
  return fails(Operation::currentFolder, "") ? "" : FakeHost::currentFolder();
}

}  // namespace kiv::test
