#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "repair/page_ids.h"

namespace kiv::repair {

/// A page that is to be corrected.
struct PageToFix {
  std::string name;  ///< as requests name it
  std::vector<PageId> ids;
};

/// A new id for one item.
struct IdRequest {
  std::string origin;  ///< where it stands, for error messages: "corrections.csv:3"
  std::string page;    ///< the name of its page
  bool isCue = false;
  float staff = 0;        ///< P2 of the item
  std::int16_t item = 0;  ///< its number in the file; 0 when only the staff is known
  std::optional<float> oldId;
  std::int16_t newId = 0;
};

/// A new id for all staves that have an old one, for the cue markers that refer to it and where it is shown.
struct IdMapping {
  std::string origin;
  std::int16_t oldId = 0;
  std::int16_t newId = 0;
  bool mayBeMissing = false;  ///< it is no error that no page has the old id
};

/// Gives these ids, which are different ones, so that they rise from the first to the last. The same ids are used.
std::vector<IdMapping> inRisingOrder(const std::vector<std::int16_t>& ids, const std::string& origin);

/// What is to be changed.
struct FixPlan {
  std::vector<std::vector<IdChange>> changes;  ///< of each page, in the order of its items
  std::vector<std::string> errors;             ///< of requests that do not fit; then nothing is to be changed
};

/// Finds out what the requests change. All of them are about the pages as they are: no request sees what another one
/// changes. Two that change one item in different ways are an error.
FixPlan planFix(const std::vector<PageToFix>& pages, const std::vector<IdRequest>& requests,
                const std::vector<IdMapping>& mappings);

}  // namespace kiv::repair
