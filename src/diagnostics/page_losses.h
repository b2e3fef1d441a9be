#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "messages/message.h"

namespace kiv {

/// Which items of a page are looked at.
enum class LossScan {
  staves,   ///< staves, and barlines if a staff is hidden: enough for what an analysis loses
  allItems  ///< for the losses of a conversion, too
};

/// What one page file holds that a run loses, each found once.
struct PageLosses {
  std::vector<Message> ofAnalysis;    ///< negative instrument identifiers
  std::vector<Message> hiddenStaves;  ///< hidden bottom staves, if the file is a page by itself
  std::vector<Message> looseItems;    ///< items on no staff, left out of a conversion
  std::vector<Message> ofWriting;     ///< what the writer cuts or sets to 0
};

/// Looks through the bytes of a page file, as far as they can be read. A scan of the staves finds no loose items and
/// nothing of the writing.
PageLosses findPageLosses(const std::string& musFileName, std::string_view bytes, LossScan scan);

}  // namespace kiv
