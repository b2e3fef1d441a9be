#include "verify/expected_pages.h"

#include <utility>

namespace kiv::proof {
namespace {

/// The real staves of a system.
SystemModel modelOf(const ReportedSystems& reported, std::size_t index, GroupKnowledge& group) {
  SystemModel model(group, reported.firstClefs);
  for (const Record& record : reported.systems[index]) {
    model.addStaff(record, *reported.itemsOf(record));
  }
  model.prepare();
  return model;
}

}  // namespace

ExpectedPages expectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress) {
  GroupKnowledge group{reported.known, {}};
  ExpectedPages expected;
  for (std::size_t i = 0; i < reported.systems.size() && expected.error.empty(); ++i) {
    progress(i);
    SystemModel model = modelOf(reported, i, group);
    model.complete(showNumbers);
    expected.error = model.error();
    if (expected.error.empty()) {
      expected.pages.push_back(model.page());
    }
  }
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
