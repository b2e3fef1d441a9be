#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/page_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

inline const std::string reportFile = "KivSystem2.TXT";

/// The report of an analysis while it is being written. What is finished is with the system at once, so that a run
/// that ends early leaves what it had. A failing medium ends the program.
class Report {
 public:
  /// Opens the report, replacing an old one. When it cannot be created the program ends.
  explicit Report(Host& host);

  /// The head: program and time, then a line for every page.
  void writeHead(std::string_view versionText, const PageTable& pages);
  /// The listing of the page in the table, then a record for every staff.
  void writePage(const ItemTable& table);

 private:
  void line(std::string_view text);
  void separator();
  void listing(const ItemTable& table);
  void records(const ItemTable& table);
  void hand();

  Host& host_;
  std::unique_ptr<OutputFile> file_;
  std::string pending_;
};

/// The value of a keyword field as getElt gives it; nullopt when the keyword is not there.
std::optional<std::string_view> findElt(std::string_view rec, std::string_view par);

/// The value of a keyword field of a record: what stands between the first par + "=" and the next comma, or the end.
/// "" when the keyword is not there. A keyword may be the end of a longer one, so records are asked for ",STAFF".
std::string_view getElt(std::string_view rec, std::string_view par);

}  // namespace kiv
