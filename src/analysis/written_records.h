#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kiv {

/// Takes the records out of a report while it is written: its lines that are no comments. They end with CR LF, LF or CR
/// alike, as for who reads the report.
class WrittenRecords : public OutputFile {
 public:
  std::optional<std::string> write(std::string_view bytes) override;

 protected:
  /// The report is complete; its last line needs no end.
  void addLastLine() { addLines(true); }

 private:
  /// A record without the end of its line, valid until it returns.
  virtual void addRecord(std::string_view record) = 0;
  void addLines(bool isEnd);

  std::string pending_;  // what is no whole line yet
};

}  // namespace kiv
