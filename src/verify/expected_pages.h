#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "verify/system_model.h"

namespace kiv::proof {

/// The systems of a report, and how to find the items of their staves.
struct ReportedSystems {
  const KnownInstruments& known;  ///< of all systems, and of a list
  const Records& records;         ///< they must outlive what is derived
  const std::vector<std::span<const Record>>& systems;
  std::function<const std::vector<PageItem>*(const Record&)> itemsOf;
  const FirstClefs& firstClefs;
};

/// The results of a conversion by the rules.
struct ExpectedPages {
  std::vector<ExpectedPage> pages;  ///< of the systems from the first on
  std::string error;                ///< why the next one cannot be converted, as a phrase; "" when there is none left
};

/// Is called before each system with its index.
using SystemProgress = std::function<void(std::size_t)>;

/// Is given the result of a system with its index. False ends the derivation.
using ExpectedPageSink = std::function<bool(std::size_t, ExpectedPage)>;

/// Derives what a conversion writes, one system after the other. Returns why the next one cannot be converted, as a
/// phrase; "" when there is none left, or the sink has ended it.
std::string deriveExpectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress,
                                const ExpectedPageSink& sink);
/// Derives what a conversion writes.
ExpectedPages expectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress);
/// The same for one whose rest staves fit the music.
ExpectedPages expectedFittingPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress);

}  // namespace kiv::proof
