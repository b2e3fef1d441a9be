#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/console/change_journal.h"
#include "platform/console/guarded_system.h"
#include "platform/console/journaled_file.h"
#include "platform/console/page_corrections.h"
#include "platform/console/path_table.h"
#include "platform/console/read_ahead.h"
#include "platform/console/replace_queue.h"
#include "platform/console/write_guard.h"

namespace kiv {

/// The folder of a path of the disk, with its separator; "" for a name alone.
std::string folderOfPath(Machine& machine, const std::string& path);

/// The guarded system of a run, with its selection: the pages are read from the very files that were found for them,
/// whatever else the disk has under names that differ in case only; and their names file is in memory.
class ConsoleSystem : public GuardedSystem {
 public:
  using GuardedSystem::GuardedSystem;

  /// Serves a text as the names file of this name. It cannot be deleted.
  void serveNamesFile(const std::string& name, std::string text);
  /// The file of the disk is one that the run reads: nothing is written over it.
  void protectFile(const std::string& path) { protectFile({"", path}); }
  void protectFile(const FoundFile& file);
  /// From now on, these names stand for these files, in whatever case they are written. They are protected, and a run
  /// that reads one of them again after another program has changed it ends.
  void bindPages(const std::vector<FoundFile>& pages);
  /// Each of the bound pages has just been opened, and has its stamp: willOpen need not open them again until one is
  /// read. They must not change from then on.
  void countAsOpened(const std::vector<FoundFile>& pages);
  /// From now on, bound pages are read with these corrections.
  void correctPages(PageCorrections corrections) { corrections_ = std::move(corrections); }
  const PageCorrections& corrections() const { return corrections_; }
  /// From now on, the folder of the first bound page is the one of its file when new files are named there, too.
  void bindFolder();

  /// From now on the journal is notified of every change, until endJournal(), before which it must not go.
  void setJournal(ChangeJournal& journal) { journal_ = &journal; }
  /// Waits until all files of replaceSoon are in their places, or one has failed. The journal is not notified any more,
  /// and no more files are written in the background. For the end of a run, whatever has ended it.
  void endJournal() noexcept;
  /// Null when there is none.
  ChangeJournal* journal() const { return journal_; }

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  bool willOpen(const std::string& name, Fetch fetch) override;
  /// From now on a thread reads the next bound pages that are expected to be read, of groups of some size. What it
  /// cannot read, and a page that has changed, is reported when the page is opened.
  void readAhead() { readsAhead_ = true; }
  void expectReading(const std::vector<std::string>& names, FileOutliner* outliner) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override;
  std::optional<std::string> createFile(const std::string& name, std::string_view bytes) override;
  /// From now on replaceSoon has threads that write the files. They are waited for before any other file is touched
  /// than a bound page, or one to be read that certainly is none of those. Only with the guard, which lets no page be
  /// replaced.
  void writeInBackground();
  std::optional<WriteFailure> replaceSoon(const std::string& name, const SharedBytes& bytes) override;
  std::optional<WriteFailure> finishReplacing() override;
  bool deleteFile(const std::string& name) override;
  std::vector<FolderEntry> listFolder(const std::string& folder) override;
  /// Puts these bytes in the place of a bound page, which must be as it was when it was first read. The page, and what
  /// it is now, are read under its name from now on. Only with a journal. Returns the failure's text.
  [[nodiscard]] std::optional<std::string> replacePage(const std::string& name, std::string_view bytes);

  /// The name under which the disk has a file that the core names, or would get it.
  std::string diskName(const std::string& name);
  /// From now on, users know these files by these paths, which need not be there.
  void showAs(const std::vector<FoundFile>& files);
  /// The name by which users know a file that the core names: its path on the disk, from the folder that the program
  /// was started in if it is in there.
  std::string shownName(const std::string& name);
  /// The same of a folder's path on the disk; "." for the folder that the program was started in.
  std::string shownFolder(const std::string& path);
  /// A name that nothing in the folder that the program was started in has: the stem itself, or followed by a number.
  std::string newName(const std::string& stem) const;
  /// The path of a file that is to be written under a name of the core.
  std::string outputPath(const std::string& name);
  /// The pages that were bound, in order, their names in upper case.
  const PathTable& pageTable() const { return pages_; }
  /// A copy of them.
  std::vector<FoundFile> pages() const { return pages_.files(); }
  /// Why the last file could not be written, and its folder: "/music/out: Permission denied"; "" when that is unknown.
  const std::string& writeFailure() const { return writeFailure_; }
  /// The files that replaceFile has written, in order, with their paths.
  const PathTable& writtenFiles() const { return writtenFiles_; }
  /// A copy of their names.
  std::vector<std::string> replacedFiles() const { return writtenFiles_.names(); }

 private:
  static std::string startFolder();
  std::unique_ptr<InputFile> openPage(const std::string& name, const std::string& path);
  std::string bound(const std::string& name);
  bool mayWrite(const std::string& path);
  enum class Existing { replaced, kept };
  std::optional<std::string> putFile(const std::string& name, std::string_view bytes, Existing existing);
  void noteWriteFailure(const std::string& path, const std::string& reason);
  std::unique_ptr<OutputFile> journaled(std::unique_ptr<OutputFile> file, const std::string& path);
  std::string inBoundFolder(const std::string& name);
  void addReplaced(const std::string& name, const std::string& path);
  bool isApart(const std::string& path);
  bool mayFollow(const std::string& path);
  std::optional<WriteFailure> handOver(JournaledFile::Names names, const SharedBytes& bytes);
  void settleFirst();
  void settle();

  static constexpr const char* refusedFile = "it is another file of the run";

  const std::string startFolder_ = startFolder();
  std::string namesFile_;
  std::shared_ptr<const std::string> names_;  // null when none is served
  NumberedTexts paths_;                       // of the disk: those of all files that the next members know
  PathTable pages_{paths_};
  PathTable writtenFiles_{paths_};
  WriteGuard guard_{paths_};
  PageStamps stamps_{paths_};
  std::map<std::string, std::string> shownAs_;  // by name in upper case
  std::string boundFolder_;                     // in upper case, with its backslash; "" for none
  std::string pageFolder_;                      // the real one
  PageCorrections corrections_;
  ChangeJournal* journal_ = nullptr;
  std::string writeFailure_;
  std::optional<WriteFailure> failed_;  // not yet returned to the run
  bool areOpened_ = false;              // countAsOpened() holds
  bool readsAhead_ = false;
  std::unique_ptr<ReadAhead> pagesAhead_;  // null while no pages are read ahead
  std::deque<std::unique_ptr<JournaledFile>> filesUnderWay_;
  std::unique_ptr<ReplaceQueue> queue_;  // null without threads; the last member, as they use others
};

}  // namespace kiv
