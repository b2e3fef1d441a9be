#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/analysis_observer.h"
#include "diagnostics/page_losses.h"
#include "diagnostics/page_staves.h"

namespace kiv {

/// Gathers what diagnostics need to know of one page file, item by item.
class PageFileFacts : public FileObserver {
 public:
  /// A staff that an analysis sees.
  struct ReadStaff {
    ItemPlace place;
    float number = 0;
    float position = 0;
    std::string name;
    bool isAlone = false;  ///< once all is gathered: no other one in the file can be meant by its number
  };

  /// With descriptions of the staves, if they are wanted.
  explicit PageFileFacts(bool describes);

  /// Forgets all items, for another file.
  void clear();
  /// The items that follow are those of a file from its start, of which these losses, or none, are to be found.
  void begin(std::optional<LossScan> losses);
  void addItem(const PageWalker& page) override;
  void skipItems(PageWalker& page, TypeSet types) override;
  /// All items have been given.
  void finish();

  /// The losses that are looked for since the last begin().
  std::optional<LossScan> scan() const { return scan_; }
  const PageLossFinder& losses() const { return losses_; }
  /// In the order of the file.
  const std::vector<ReadStaff>& staves() const { return staves_; }
  /// The same staves, once all is gathered, if descriptions are wanted.
  const std::vector<DescribedStaff>& described() const { return described_.staves(); }

 private:
  void addStaff(const PageWalker& page);

  const bool describes_;
  std::vector<ReadStaff> staves_;
  StaffDescriber described_;
  std::optional<LossScan> scan_;
  PageLossFinder losses_;
};

}  // namespace kiv
