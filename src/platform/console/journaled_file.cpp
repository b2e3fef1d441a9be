#include "platform/console/journaled_file.h"

namespace kiv {

QueuedFile::Failure JournaledFile::enter() {
  if (journal_ == nullptr) {
    return std::nullopt;
  }
  auto failure = journal_->beforeReplace(names_.path, destination_.path, *bytes_);
  if (isFirst_) {
    *mark_ = journal_->temporaryMark();
  }
  return failure;
}

QueuedFile::Failure JournaledFile::prepare() {
  destination_.mark = *mark_;
  return prepared_.prepare(destination_, *bytes_);
}

}  // namespace kiv
