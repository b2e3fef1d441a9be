#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/group_facts.h"
#include "diagnostics/recent_pages.h"
#include "platform/files.h"
#include "report_page/picture_code.h"
#include "report_page/report_data.h"

namespace kiv::report {

/// Something that is to be marked on a picture.
struct WantedMark {
  std::string file;       ///< full name, as facts have it
  float staff = 0;        ///< its number in the file
  int item = 0;           ///< 0 for the whole staff
  std::size_t about = 0;  ///< an index
  bool isProposal = false;
};

/// Something that is to be marked on the picture of a result.
struct ResultMark {
  float staff = 0;                                  ///< its number in the result
  std::optional<std::pair<float, float>> bar = {};  ///< from where to where; none for the whole staff
  std::size_t about = 0;                            ///< an index
};

/// Which systems are drawn.
struct WantedPictures {
  std::vector<std::size_t> systems;                       ///< indices of facts, the most important first
  std::map<std::size_t, std::vector<WantedMark>> marks;   ///< by the index
  std::function<std::string(std::size_t number)> result;  ///< the full name of a system's result; empty without results
  const GroupFacts* converted = nullptr;                  ///< of the systems as the results have them
  std::map<std::size_t, std::vector<ResultMark>> resultMarks;  ///< by the index
  std::size_t mostBytes = 0;                                   ///< of all pictures together
};

/// Draws systems from their items. The pages are read again; what cannot be read is not drawn.
class PictureMaker {
 public:
  using Text = std::function<std::string(const std::string&)>;

  /// The function gives texts of pages in UTF-8. Files must outlive the maker.
  PictureMaker(Files& files, const Text& text);

  Pictures draw(const GroupFacts& facts, const WantedPictures& wanted);

 private:
  /// The numbers of staves in the picture, by file and by their numbers there.
  using StaffNumbers = std::map<std::string, std::map<float, float>>;

  Picture pictureOf(const SystemFact& system, const std::vector<WantedMark>& marks);
  Picture pictureOfResult(const SystemFact& system, const std::vector<Item>& result,
                          const std::vector<ResultMark>& marks);
  Picture pictureFrom(const PageLayout& layout);
  void addMarks(const std::vector<WantedMark>& marks, const StaffNumbers& numbers, const PageLayout& layout,
                Picture& picture);

  Files& files_;
  Text text_;
  RecentPages<std::vector<Item>> pages_;
  TextPool codes_;
  TextPool texts_;
  std::size_t staves_ = 0;
};

}  // namespace kiv::report
