#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "messages/message.h"

namespace kiv {

/// What one page file holds that a run loses, each found once.
struct PageLosses {
  std::vector<Message> ofAnalysis;    ///< negative instrument identifiers
  std::vector<Message> hiddenStaves;  ///< hidden bottom staves, if the file is a page by itself
  std::vector<Message> looseItems;    ///< items on no staff, left out of a conversion
  std::vector<Message> ofWriting;     ///< what the writer cuts or sets to 0
};

/// Looks through the bytes of a page file, as far as they can be read.
PageLosses findPageLosses(const std::string& musFileName, std::string_view bytes);

}  // namespace kiv
