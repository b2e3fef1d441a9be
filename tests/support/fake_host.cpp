#include "tests/support/fake_host.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace kiv::test {
namespace {

class FakeInput : public InputFile {
 public:
  explicit FakeInput(std::string content) : content_(std::move(content)) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    const std::size_t count = content_.copy(room.data(), room.size(), position_);
    position_ += count;
    return count;
  }

 private:
  std::string content_;
  std::size_t position_ = 0;
};

class FakeOutput : public OutputFile {
 public:
  FakeOutput(std::string& content, const std::optional<std::string>& failure) : content_(content), failure_(failure) {}

  std::optional<std::string> write(std::string_view bytes) override {
    if (!failure_) {
      content_ += bytes;
    }
    return failure_;
  }

 private:
  std::string& content_;
  const std::optional<std::string>& failure_;
};

}  // namespace

void PrintTo(const Message& message, std::ostream* out) {
  constexpr const char* icons[] = {"none", "information", "exclamation", "critical"};
  *out << icons[static_cast<int>(message.icon)] << (message.buttons == Buttons::yesNo ? " yes/no" : "") << ": "
       << message.text;
}

std::string FakeHost::upperCase(std::string_view text) {
  std::string upper(text);
  // The ANSI code page of Western Europe: small letters lie 32 behind their capitals; the sign of division is none.
  for (char& c : upper) {
    const auto code = static_cast<unsigned char>(c);
    if ((code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7)) {
      c = static_cast<char>(code - 0x20);
    }
  }
  return upper;
}

std::string FakeHost::key(const std::string& name) const {
  std::string upper(name.find('\\') == std::string::npos ? folder + "\\" + name : name);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c; });
  return upper;
}

void FakeHost::addFile(const std::string& name, std::string content) {
  files_[key(name)] = std::move(content);
}

bool FakeHost::hasFile(const std::string& name) const {
  return files_.contains(key(name));
}

std::string FakeHost::file(const std::string& name) const {
  const auto found = files_.find(key(name));
  return found == files_.end() ? "(no file)" : found->second;
}

int FakeHost::timesRead(const std::string& name) const {
  const auto found = reads_.find(key(name));
  return found == reads_.end() ? 0 : found->second;
}

Answer FakeHost::message(Icon icon, std::string_view text, Buttons buttons) {
  messages.push_back({icon, std::string(text), buttons});
  if (whileShown) {
    whileShown(messages.back());
  }
  if (buttons == Buttons::ok) {
    return Answer::ok;
  }
  const Answer answer = answers.empty() ? Answer::yes : answers.front();
  if (!answers.empty()) {
    answers.pop_front();
  }
  return answer;
}

bool FakeHost::showText(const std::string& name) {
  if (showsTexts) {
    calls.push_back("show " + name);
  }
  return showsTexts;
}

void FakeHost::setPointer(Pointer pointer) {
  calls.emplace_back(pointer == Pointer::hourglass ? "pointer hourglass" : "pointer normal");
}

void FakeHost::showProgress(int done, int all, std::string_view plural) {
  progress.push_back(std::to_string(done) + "/" + std::to_string(all) + " " + std::string(plural));
}

std::unique_ptr<InputFile> FakeHost::openInput(const std::string& name) {
  const auto found = files_.find(key(name));
  if (found == files_.end()) {
    return nullptr;
  }
  ++reads_[found->first];
  return std::make_unique<FakeInput>(found->second);
}

std::unique_ptr<OutputFile> FakeHost::openOutput(const std::string& name) {
  if (unwritable.contains(name)) {
    return nullptr;
  }
  std::string& content = files_[key(name)];
  content.clear();
  return std::make_unique<FakeOutput>(content, writeFailure);
}

std::optional<std::string> FakeHost::replaceFile(const std::string& name, std::string_view bytes) {
  if (unwritable.contains(name)) {
    return "Access is denied";
  }
  std::string content(bytes);  // when there is no room for it, the old file stays
  files_[key(name)] = std::move(content);
  return std::nullopt;
}

bool FakeHost::deleteFile(const std::string& name) {
  calls.push_back("delete " + name);
  return !unwritable.contains(name) && files_.erase(key(name)) > 0;
}

std::vector<FolderEntry> FakeHost::listFolder(const std::string& listed) {
  calls.push_back("list " + listed);
  return folderEntries;
}

std::optional<std::string> FakeHost::shortName(const std::string& path) {
  const auto found = shortNames.find(path);
  return found == shortNames.end() ? std::nullopt : std::optional(found->second);
}

std::string FakeHost::profileKey(const std::string& name) {
  calls.push_back("profile " + name);
  const auto found = profile.find(name);
  return found == profile.end() ? "" : found->second;
}

std::int32_t FakeHost::runProcess(const std::string& commandLine, ShowState show) {
  calls.push_back("run " + commandLine + (show == ShowState::maximised ? " (maximised)" : ""));
  return exitCode;
}

std::optional<ShellFailure> FakeHost::runInShell(const std::string& command, WindowStyle style) {
  calls.push_back("shell " + command + " (style " + std::to_string(static_cast<int>(style)) + ")");
  return shellFailure;
}

std::optional<int> endOf(const std::function<void()>& run) {
  try {
    run();
  } catch (const ProgramEnd& end) {
    return end.exitCode;
  }
  return std::nullopt;
}

}  // namespace kiv::test
