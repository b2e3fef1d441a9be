#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/console/change_journal.h"
#include "platform/console/native_system.h"
#include "platform/console/replace_queue.h"
#include "platform/files.h"

namespace kiv {

/// The result of a run on its way to its place, which is entered in the run's journal first.
class JournaledFile : public QueuedFile {
 public:
  struct Names {
    std::string name;  ///< as the run has it
    std::string file;  ///< in the bound folder
    std::string path;
  };

  /// The journal must outlive this object; null for none. The mark of temporary files is known when the first file of
  /// the queue is entered, and others are prepared after that: they share the text, which the first one sets.
  JournaledFile(Names names, NativeSystem::Destination destination, SharedBytes bytes, ChangeJournal* journal)
      : names_(std::move(names)), bytes_(std::move(bytes)), journal_(journal), destination_(std::move(destination)) {}
  /// Lets the file after this one in the queue share the mark.
  void shareMarkWith(JournaledFile& next) const {
    next.mark_ = mark_;
    next.isFirst_ = false;
  }

  const Names& names() const { return names_; }
  const NativeSystem::Destination& destination() const { return destination_; }

  Failure enter() override;
  Failure prepare() override;
  Failure place() override { return prepared_.place(); }
  void discard() override { prepared_.discard(); }

 private:
  Names names_;
  SharedBytes bytes_;
  ChangeJournal* journal_;
  std::shared_ptr<std::string> mark_ = std::make_shared<std::string>();
  bool isFirst_ = true;
  NativeSystem::Destination destination_;
  PreparedFile prepared_;  // the last member, as signals wait for its end
};

}  // namespace kiv
