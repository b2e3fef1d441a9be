#include "apps/kivsys/output/verification_json.h"

#include "platform/console/native_system.h"

namespace kiv {

using Json = nlohmann::ordered_json;

Json toJson(const proof::Verification& verification) {
  Json findings = Json::array();
  for (const proof::Finding& finding : verification.findings) {
    findings.push_back({{"file", NativeSystem::toUtf8(finding.file)},
                        {"item", finding.item == 0 ? Json() : Json(finding.item)},
                        {"what", NativeSystem::toUtf8(finding.what)}});
  }
  Json files = Json::array();
  for (const DigestedFile& file : verification.files) {
    files.push_back({{"name", NativeSystem::toUtf8(file.name)}, {"sha256", file.sha256}});
  }
  const proof::Counts& counts = verification.counts;
  return {{"proved", verification.proved()},
          {"findings", findings},
          {"counts",
           {{"inputs", counts.inputs},
            {"results", counts.results},
            {"carried", counts.carried},
            {"added", counts.added},
            {"barlines", counts.barlines},
            {"left_out", counts.leftOut}}},
          {"files", files}};
}

}  // namespace kiv
