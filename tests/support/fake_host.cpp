#include "tests/support/fake_host.h"

#include <algorithm>
#include <ostream>

#include "tests/support/outlined_input.h"

namespace kiv {

void PrintTo(const Location& location, std::ostream* out) {
  const auto part = [&](const char* name, const auto& number) {
    if (number) {
      *out << ", " << name << " " << *number;
    }
  };
  *out << location.file << ", item " << location.item;
  part("staff", location.staff);
  part("instrument", location.instrument);
  part("system", location.system);
  *out << ", " << location.repeats << " times";
}

void PrintTo(const Message& message, std::ostream* out) {
  PrintTo(test::Message{message.icon, message.text, message.buttons}, out);
  *out << "\ncode " << message.code << " at ";
  PrintTo(message.location, out);
  for (const Location& place : message.places) {
    *out << "\nplace ";
    PrintTo(place, out);
  }
}

}  // namespace kiv

namespace kiv::test {
namespace {

/// A file whose writes fail as long as the test wants it.
class FakeOutput : public OutputFile {
 public:
  FakeOutput(std::unique_ptr<OutputFile> file, const std::optional<std::string>& failure)
      : file_(std::move(file)), failure_(failure) {}

  std::optional<std::string> write(std::string_view bytes) override {
    return failure_ ? failure_ : file_->write(bytes);
  }

 private:
  std::unique_ptr<OutputFile> file_;
  const std::optional<std::string>& failure_;
};

}  // namespace

void PrintTo(const Message& message, std::ostream* out) {
  constexpr const char* icons[] = {"none", "information", "exclamation", "critical"};
  *out << icons[static_cast<int>(message.icon)] << (message.buttons == Buttons::yesNo ? " yes/no" : "") << ": "
       << message.text;
}

std::string FakeHost::file(const std::string& name) const {
  const std::string* content = find(name);
  return content == nullptr ? "(no file)" : *content;
}

std::map<std::string, std::string> FakeHost::files() const {
  std::map<std::string, std::string> contents;
  for (const std::string& name : names()) {
    contents.emplace(name, *find(name));
  }
  return contents;
}

int FakeHost::timesRead(const std::string& name) const {
  const auto found = reads_.find(fullName(name));
  return found == reads_.end() ? 0 : found->second;
}

std::unique_ptr<InputFile> FakeHost::openInput(const std::string& name) {
  auto file = OverlayFiles::openInput(name);
  if (file) {
    ++reads_[fullName(name)];
  }
  const auto expected = expected_.find(name);
  if (!file || expected == expected_.end()) {
    return file;
  }
  auto outline = expected->second ? std::move(expected->second) : outlineOf(name);
  expected_.erase(expected);
  return std::make_unique<OutlinedInput>(this->file(name), std::move(outline));
}

void FakeHost::expectReading(const std::vector<std::string>& names, FileOutliner* outliner) {
  expected_.clear();
  outliner_ = outliner;
  for (const std::string& name : makesOutline ? names : std::vector<std::string>()) {
    expected_.emplace(name, outlineOf(name));
  }
}

std::unique_ptr<FileOutline> FakeHost::outlineOf(const std::string& name) {
  return outliner_ != nullptr && hasFile(name) && makesOutline() ? outliner_->outlineOf(file(name)) : nullptr;
}

std::unique_ptr<OutputFile> FakeHost::openOutput(const std::string& name) {
  if (unwritable.contains(name)) {
    return nullptr;
  }
  return std::make_unique<FakeOutput>(OverlayFiles::openOutput(name), writeFailure);
}

std::optional<std::string> FakeHost::replaceFile(const std::string& name, std::string_view bytes) {
  return unwritable.contains(name) ? "Access is denied" : OverlayFiles::replaceFile(name, bytes);
}

bool FakeHost::deleteFile(const std::string& name) {
  calls.push_back("delete " + name);
  return !unwritable.contains(name) && OverlayFiles::deleteFile(name);
}

std::vector<FolderEntry> FakeHost::listFolder(const std::string& listed) {
  calls.push_back("list " + listed);
  return folderEntries;
}

std::optional<std::string> FakeHost::shortName(const std::string& path) {
  const auto found = shortNames.find(path);
  return found == shortNames.end() ? std::nullopt : std::optional(found->second);
}

Answer FakeHost::show(const kiv::Message& message) {
  shown.push_back(message);
  messages.push_back({message.icon, message.text, message.buttons});
  if (whileShown) {
    whileShown(messages.back());
  }
  if (message.buttons == Buttons::ok) {
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

std::int32_t FakeHost::runProcess(const std::string& commandLine, ShowState show) {
  calls.push_back("run " + commandLine + (show == ShowState::maximized ? " (maximized)" : ""));
  return exitCode;
}

std::optional<ShellFailure> FakeHost::runInShell(const std::string& command, WindowStyle style) {
  calls.push_back("shell " + command + " (style " + std::to_string(static_cast<int>(style)) + ")");
  return shellFailure;
}

std::string FakeHost::upperCase(std::string_view text) {
  std::string upper(text);
  // The ANSI code page of Western Europe: small letters lie 32 after their capitals; the division sign is none.
  for (char& c : upper) {
    const auto code = static_cast<unsigned char>(c);
    if ((code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7)) {
      c = static_cast<char>(code - 0x20);
    }
  }
  return upper;
}

std::string FakeHost::profileKey(const std::string& name) {
  calls.push_back("profile " + name);
  const auto found = profile.find(name);
  return found == profile.end() ? "" : found->second;
}

std::optional<int> endOf(User& user, const std::function<void()>& run) {
  return exitCodeOf(user, run);
}

}  // namespace kiv::test
