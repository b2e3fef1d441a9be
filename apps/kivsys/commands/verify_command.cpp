#include "apps/kivsys/commands/verify_command.h"

#include <iostream>

#include "apps/kivsys/commands/analysis_again.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/verification_json.h"

namespace kiv {
namespace {

constexpr std::size_t mostLines = 200;

std::string lineOf(const proof::Finding& finding) {
  return finding.file + (finding.item == 0 ? "" : ", item " + std::to_string(finding.item)) + ": " + finding.what +
         "\n";
}

/// The digests under the names that the files have on the disk, whatever case a names file gave them.
std::string manifestOf(NativeSystem& system, std::vector<DigestedFile> files) {
  for (DigestedFile& file : files) {
    const bool hasFolder = file.name.find('\\') != std::string::npos;
    file.name = system.diskName(hasFolder ? file.name : system.currentFolder() + "\\" + file.name);
  }
  return manifestText(files);
}

int printVerification(NativeSystem& system, const proof::Verification& verification, const std::string& manifest,
                      bool json) {
  if (!manifest.empty()) {
    if (const auto failure = system.replaceFile(manifest, manifestOf(system, verification.files))) {
      std::cerr << "kivsys: cannot write the manifest: " << *failure << '\n';
      return exit_status::critical;
    }
  }
  const std::string text =
      json ? toJson(verification).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n"
           : asText(verification);
  return printOutcome(text, verification.proved() ? exit_status::normal : exit_status::critical);
}

}  // namespace

proof::Verification verificationOf(NativeSystem& system, const std::string& namesFile,
                                   const proof::ConversionToProve& conversion) {
  return proof::verify(system, system, analyzeAgain(system, system, namesFile), conversion);
}

std::string asText(const proof::Verification& verification) {
  const proof::Counts& counts = verification.counts;
  std::string text = verification.proved() ? "PROVED=YES\n" : "PROVED=NO\n";
  text += "Inputs: " + std::to_string(counts.inputs) + "\nResults: " + std::to_string(counts.results) +
          "\nItems carried: " + std::to_string(counts.carried) + "\nItems added: " + std::to_string(counts.added) +
          "\nBarlines and braces made anew: " + std::to_string(counts.barlines) +
          "\nItems on no staff of the report: " + std::to_string(counts.leftOut) + "\n";
  std::size_t lines = 0;
  for (const proof::Finding& finding : verification.findings) {
    if (++lines > mostLines) {
      return text + "and " + std::to_string(verification.findings.size() - mostLines) + " more\n";
    }
    text += lineOf(finding);
  }
  return text;
}

int runVerify(const VerifyOptions& options) {
  ConsoleHost console;
  NativeSystem& system = console.system();
  const std::string manifest = options.manifest.empty() ? "" : system.fullName(options.manifest);
  const proof::ConversionToProve conversion{system.fullName(options.result), std::nullopt};
  return runOnSelection(console, options.selection, [&](const std::string& namesFile) {
    return printVerification(system, verificationOf(system, namesFile, conversion), manifest, options.json);
  });
}

}  // namespace kiv
