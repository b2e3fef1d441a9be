// Any bytes as a journal of a run.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "apps/kivsys/undo/journal_text.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"
#include "platform/kept_file.h"

namespace kiv::fuzz {
namespace {

void checkFile(const Journal& journal, const FileChange& file) {
  expect(isRealPath(file.path), "a file has a full path");
  expect(std::any_of(journal.folders.begin(), journal.folders.end(),
                     [&](const JournalFolder& folder) { return folder.path == folderAbove(file.path); }),
         "a file is in a folder of the run");
  expect(file.kept.empty() == (file.before == file_state::missing), "what was there is kept");
  expect(file.kept.find_first_not_of("0123456789abcdef-") == std::string::npos, "a kept file leads nowhere else");
  expect(!file.states.empty() && file.states.front() == file.before, "a file can be what it was");
}

/// The same journal, its folders first, without the digests of files that were opened.
std::string writtenAgain(const Journal& journal) {
  std::string text = journalHead(journal);
  for (const JournalFolder& folder : journal.folders) {
    text += folderLine(folder);
  }
  for (const std::string& made : journal.madeFolders) {
    text += madeFolderLine(made);
  }
  for (const FileChange& file : journal.files) {
    if (file.states.size() < 2) {
      continue;
    }
    text += firstChangeLine({file.path, file.before, file.kept, {file.states[1]}});
    for (std::size_t state = 2; state < file.states.size(); ++state) {
      text += laterChangeLine(file.path, file.states[state]);
    }
  }
  return text;
}

void run(std::string_view text) {
  const auto journal = readJournal(text);
  if (!journal) {
    return;
  }
  expect(isRunId(journal->id), "a run has a name");
  for (const FileChange& file : journal->files) {
    checkFile(*journal, file);
  }
  const auto cut = readJournal(text.substr(0, text.rfind('\n') + 1));
  expect(cut && *cut == *journal, "an incomplete line says nothing");
  const auto again = readJournal(writtenAgain(*journal));
  expect(again && *again == *journal, "what is read can be written, and reads the same");
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
