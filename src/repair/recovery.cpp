#include "repair/recovery.h"

#include <algorithm>
#include <limits>

#include "mus/format.h"
#include "mus/page_encoding.h"
#include "mus/page_walker.h"
#include "repair/candidates.h"
#include "repair/explanations.h"
#include "repair/page_end.h"
#include "repair/plausibility.h"

namespace kiv::repair {
namespace {

constexpr std::size_t mostItemWords = std::numeric_limits<std::int16_t>::max() - trailerWords;

/// The doubt up to which an item is one of the page, for learning from it and for saving it. Of a page on which less
/// can be learned, less doubt is allowed.
constexpr double mostDoubt = 0.002;
constexpr double enoughToLearnFrom = 50;
/// The items that are found with what earlier rounds have learned replace those.
constexpr int roundsOfLearning = 2;

SavedItem savedItem(const Candidate& item) {
  return {{item.start, item.end}, item.type, item.staff};
}

std::vector<Candidate> likelyItems(const Candidates& candidates, const Plausibility& plausibility, double doubt) {
  const std::vector<double> likelihoods = Explanations(candidates, plausibility).likelihoods();
  std::vector<Candidate> items;
  for (std::size_t i = 0; i < likelihoods.size(); ++i) {
    const Candidate& candidate = candidates.all()[i];
    if (likelihoods[i] >= 1 - doubt && (items.empty() || candidate.start >= items.back().end)) {
      items.push_back(candidate);
    }
  }
  return items;
}

std::vector<Candidate> itemsOf(std::string_view file) {
  const Candidates candidates(file);
  Plausibility plausibility(file);
  std::vector<Candidate> items;
  for (int round = 0; round < roundsOfLearning; ++round) {
    items = likelyItems(candidates, plausibility, mostDoubt);
    plausibility.learn(items);
  }
  const double learned = std::min(1.0, static_cast<double>(items.size()) / enoughToLearnFrom);
  return likelyItems(candidates, plausibility, mostDoubt * learned);
}

/// The items that a page reader reads, and where they end; nullopt when it finds the page damaged.
std::optional<std::vector<SavedItem>> readableItems(std::string_view file) {
  PageWalker page(file);
  std::vector<SavedItem> items;
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    items.push_back({{page.itemOffset(), page.position()}, page.type(), page.par(par::staff)});
    status = page.findItem();
  }
  return status == ReadStatus::endOfItems ? std::optional(items) : std::nullopt;
}

std::size_t endOf(const std::vector<SavedItem>& items) {
  return items.empty() ? headerBytes : items.back().bytes.end;
}

/// The trailer behind the saved items; more may be lost between them and it.
std::optional<ByteRange> trailerAfter(std::string_view file, std::size_t offset) {
  for (; offset + trailerBytes <= file.size(); ++offset) {
    if (isTrailerAt(file, offset)) {
      return ByteRange{offset, offset + trailerBytes};
    }
  }
  return std::nullopt;
}

/// Whether the trailer is somewhat before or after the place that the header states: bytes were removed or inserted.
/// When it is far away, the header is wrong.
bool hasMovedTrailer(std::string_view file, const std::optional<ByteRange>& trailer) {
  constexpr std::size_t near = 512;
  const auto stated = statedTrailer(file);
  if (!stated || !trailer || trailer->begin == *stated) {
    return false;
  }
  return std::max(*stated, trailer->begin) - std::min(*stated, trailer->begin) <= near;
}

/// Where bytes were removed within an item, it begins as it did and ends as another one, and nothing else shows that.
/// So an item before a loss is lost, too, if bytes of the page were moved, or those after the loss.
void dropItemsBeforeRemovals(std::string_view file, std::vector<SavedItem>& items) {
  const auto trailer = trailerAfter(file, endOf(items));
  const bool isMoved = hasMovedTrailer(file, trailer);
  std::vector<SavedItem> kept;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::size_t end = items[i].bytes.end;
    const std::size_t next = i + 1 < items.size() ? items[i + 1].bytes.begin : trailer ? trailer->begin : end;
    if (next == end || (!isMoved && (next - end) % bytesPerWord == 0)) {
      kept.push_back(items[i]);
    }
  }
  items = std::move(kept);
}

/// Where the last loss can reach to: what follows is a trailer, even a damaged or a cut one.
std::size_t endOfLosses(std::string_view file, const Recovery& recovery) {
  const std::size_t items = endOf(recovery.items);
  if (recovery.trailer) {
    return recovery.trailer->begin;
  }
  return isCutTrailerAt(file, items) || statedTrailer(file) == items ? items : file.size();
}

void addLosses(std::string_view file, Recovery& recovery) {
  std::size_t offset = std::min(headerBytes, file.size());
  const auto lose = [&](std::size_t end, std::size_t itemsBefore) {
    if (offset < end) {
      recovery.losses.push_back({{offset, end}, itemsBefore});
    }
  };
  for (std::size_t i = 0; i < recovery.items.size(); ++i) {
    lose(recovery.items[i].bytes.begin, i);
    offset = recovery.items[i].bytes.end;
  }
  lose(endOfLosses(file, recovery), recovery.items.size());
}

/// Items beyond those that a header can count are lost.
void dropUncountable(std::vector<SavedItem>& items) {
  std::size_t words = 0;
  const auto tooMany = std::ranges::find_if(items, [&](const SavedItem& item) {
    words += item.bytes.size() / bytesPerWord;
    return words > mostItemWords;
  });
  items.erase(tooMany, items.end());
}

int wordsOf(const std::vector<SavedItem>& items) {
  std::size_t bytes = trailerBytes;
  for (const SavedItem& item : items) {
    bytes += item.bytes.size();
  }
  return static_cast<int>(bytes / bytesPerWord);
}

}  // namespace

Recovery recover(std::string_view file) {
  Recovery recovery;
  recovery.statedWords = statedWords(file);
  const auto readable = readableItems(file);
  const std::string_view examined = file.substr(0, readableBytes);
  if (readable && (isTrailerAt(file, endOf(*readable)) || file.size() <= endOf(*readable) + trailerBytes)) {
    recovery.items = *readable;
    recovery.isWhole = true;
  } else {
    for (const Candidate& item : itemsOf(examined)) {
      recovery.items.push_back(savedItem(item));
    }
    dropItemsBeforeRemovals(file, recovery.items);
    dropUncountable(recovery.items);
    recovery.isWhole = readable && readable->size() >= recovery.items.size();
    if (recovery.isWhole) {
      recovery.items = *readable;
    }
  }
  recovery.trailer = trailerAfter(file, endOf(recovery.items));
  recovery.words = wordsOf(recovery.items);
  if (!recovery.isWhole) {
    addLosses(file, recovery);
  }
  return recovery;
}

std::string recoveredPage(std::string_view file, const Recovery& recovery) {
  const auto words = static_cast<unsigned>(recovery.words);
  std::string page{static_cast<char>(words & 0xFFU), static_cast<char>(words >> 8U)};
  for (const SavedItem& item : recovery.items) {
    page += file.substr(item.bytes.begin, item.bytes.size());
  }
  page += recovery.trailer ? file.substr(recovery.trailer->begin, trailerBytes) : standardTrailer();
  return page;
}

}  // namespace kiv::repair
