#include "verify/expected_pages.h"

#include <utility>

namespace kiv::proof {
namespace {

/// The real staves of a system.
SystemModel modelOf(const ReportedSystems& reported, std::size_t index, GroupKnowledge& group) {
  SystemModel model(group, reported.firstClefs);
  for (const Record& record : reported.systems[index]) {
    model.addStaff(record, reported.records.fileOf(record), *reported.itemsOf(record));
  }
  model.prepare();
  return model;
}

/// The result of a system.
struct DerivedPage {
  ExpectedPage page;
  std::string error;  // why there is none, as a phrase; "" when there is one
};

/// Derives a result; what it was derived from is forgotten.
DerivedPage pageOf(SystemModel model, bool showNumbers) {
  model.complete(showNumbers);
  return model.error().empty() ? DerivedPage{model.page(), ""} : DerivedPage{{}, model.error()};
}

}  // namespace

std::string deriveExpectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress,
                                const ExpectedPageSink& sink) {
  GroupKnowledge group{reported.known, {}};
  for (std::size_t i = 0; i < reported.systems.size(); ++i) {
    progress(i);
    DerivedPage derived = pageOf(modelOf(reported, i, group), showNumbers);
    if (!derived.error.empty()) {
      return std::move(derived.error);
    }
    if (!sink(i, std::move(derived.page))) {
      break;
    }
  }
  return "";
}

ExpectedPages expectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress) {
  ExpectedPages expected;
  expected.error = deriveExpectedPages(reported, showNumbers, progress, [&](std::size_t, ExpectedPage page) {
    expected.pages.push_back(std::move(page));
    return true;
  });
  return expected;
}

ExpectedPages expectedFittingPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress) {
  GroupKnowledge group{reported.known, {}};
  ExpectedPages expected;
  std::vector<SystemModel> models;
  std::vector<MusicSystem> music;
  for (std::size_t i = 0; i < reported.systems.size(); ++i) {
    models.push_back(modelOf(reported, i, group));
    if (!models.back().error().empty()) {
      expected.error = models.back().error();
      return expected;
    }
    music.push_back(models.back().music());
  }
  const MusicGroup all(std::move(music));
  for (std::size_t i = 0; i < models.size() && expected.error.empty(); ++i) {
    progress(i);
    models[i].complete(showNumbers, {all, i});
    expected.error = models[i].error();
    if (expected.error.empty()) {
      expected.pages.push_back(models[i].page());
    }
  }
  return expected;
}

}  // namespace kiv::proof
