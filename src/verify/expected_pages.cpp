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

/// The result of a system; what it was derived from is forgotten. An error is why there is none.
ExpectedPage pageOf(SystemModel model, bool showNumbers, std::string& error) {
  model.complete(showNumbers);
  error = model.error();
  return error.empty() ? model.page() : ExpectedPage();
}

}  // namespace

std::string deriveExpectedPages(const ReportedSystems& reported, bool showNumbers, const SystemProgress& progress,
                                const ExpectedPageSink& sink) {
  GroupKnowledge group{reported.known, {}};
  for (std::size_t i = 0; i < reported.systems.size(); ++i) {
    progress(i);
    std::string error;
    ExpectedPage page = pageOf(modelOf(reported, i, group), showNumbers, error);
    if (!error.empty()) {
      return error;
    }
    if (!sink(i, std::move(page))) {
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
