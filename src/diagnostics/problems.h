#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/page_observer.h"
#include "diagnostics/page_lookup.h"
#include "input/names_table.h"
#include "platform/host.h"

namespace kiv {

/// A message and one place that it is about. What is not certain is empty.
struct Problem {
  std::string_view code;
  Icon severity = Icon::none;
  std::size_t message = 0;          ///< which message of the run it is, from 0
  std::optional<std::string> file;  ///< full name
  std::optional<std::int16_t> system;
  std::optional<double> staff;       ///< its number in the file
  std::optional<double> instrument;  ///< that of the staff, or the one that the cue refers to
  std::optional<ItemPlace> place;    ///< the item in the file
  int repeats = 1;                   ///< how often the message counts this place

  bool operator==(const Problem&) const = default;
};

/// Keeps what the checks of an analysis find on pages that are not in order.
class FindingsLog : public PageObserver {
 public:
  struct Page {
    PageEntry page;
    std::string musFileName;  ///< the top file
    PageProblems problems;
  };

  void pageChecked(const PageEntry& page, const std::string& musFileName, const PageProblems& problems) override;

  const std::vector<Page>& pages() const { return pages_; }

 private:
  std::vector<Page> pages_;
};

/// A message as the run showed it.
struct RunMessage {
  Icon icon = Icon::none;
  std::string text;
  std::string file;  ///< of a message about one page file: that file; else ""
};

/// What is left of a run when it has ended. The parts must outlive it.
struct RunState {
  const FindingsLog& findings;
  const NamesTable& names;
  const PageTable& pages;
  std::string namesFile;
  std::string musFileName;  ///< the page file being read when the run ended
  bool allowZeroInstrId = false;
};

/// A record for every message of the run and every place that it is about, in the order of the messages; a message
/// without a place has one record. Reads again the report in the current folder, and the pages that have messages.
std::vector<Problem> findProblems(Host& host, const RunState& run, const std::vector<RunMessage>& messages);

}  // namespace kiv
