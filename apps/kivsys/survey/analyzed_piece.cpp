#include "apps/kivsys/survey/analyzed_piece.h"

#include <new>
#include <system_error>

namespace kiv {
namespace {

/// A piece without an analysis, for which the system lacks something.
Analyzed lacking(std::string_view lack, Machine& machine, const std::vector<std::string>& pages) {
  Analyzed analyzed{{}, std::string(lack)};
  analyzed.findings.files = pages.size();
  analyzed.findings.pages = countPages(machine, pages);
  analyzed.findings.problems.emplace_back(lack);
  analyzed.findings.stopped = lack;
  return analyzed;
}

void inUtf8(PieceFindings& findings) {
  for (std::string& problem : findings.problems) {
    problem = NativeSystem::toUtf8(problem);
  }
  findings.stopped = NativeSystem::toUtf8(findings.stopped);
  for (auto& [id, name] : findings.names) {
    name = NativeSystem::toUtf8(name);
  }
  for (BadPage& bad : findings.badPages) {
    for (std::string& file : bad.files) {
      file = NativeSystem::toUtf8(file);
    }
    bad.reason = NativeSystem::toUtf8(bad.reason);
    bad.shown = NativeSystem::toUtf8(bad.shown);
  }
}

}  // namespace

Analyzed analyzePiece(NativeSystem& system, const std::vector<std::string>& pages, BadPages badPages) {
  try {
    Analyzed analyzed{surveyPiece(system, system, pages, badPages), ""};
    inUtf8(analyzed.findings);
    return analyzed;
  } catch (const std::bad_alloc&) {
    return lacking(outOfMemory, system, pages);
  } catch (const std::system_error& failure) {
    return lacking(failure.code().message(), system, pages);
  }
}

}  // namespace kiv
