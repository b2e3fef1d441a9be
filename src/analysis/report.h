#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/page_table.h"
#include "analysis/table_rows.h"
#include "mus/item_table.h"
#include "platform/files.h"
#include "platform/machine.h"

namespace kiv {

inline const std::string reportFile = "KivSystem2.TXT";

/// The report of an analysis while it is being written. What is finished is with the system at once, so that a run
/// that ends early leaves what it had. A failed write ends the program.
class Report {
 public:
  /// Opens the report, replacing an old one. When it cannot be created the program ends.
  Report(Files& files, Machine& machine);
  /// Writes to a file that is open, and outlives this.
  Report(OutputFile& file, Machine& machine) : machine_(machine), file_(&file) {}

  /// The head: program and time, then a line for every page.
  void writeHead(std::string_view versionText, const PageTable& pages);
  /// The listing of the page in the table, then a record for every staff.
  void writePage(const ItemTable& table, const TableRows& rows);

 private:
  void line(std::string_view text);
  void separator();
  void listing(const ItemTable& table, const std::vector<int>& rows);
  void records(const ItemTable& table, const std::vector<int>& staves);
  void flush();

  Machine& machine_;
  std::unique_ptr<OutputFile> ownFile_;  // null when it is another's
  OutputFile* file_;
  std::string pending_;
};

}  // namespace kiv
