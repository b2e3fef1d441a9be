#include "apps/kivsys/commands/verify_command.h"

#include <iostream>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/verification_json.h"
#include "verify/analysis_again.h"

namespace kiv {
namespace {

constexpr std::size_t mostLines = 200;

std::string lineOf(const proof::Finding& finding) {
  return finding.file + (finding.item == 0 ? "" : ", item " + std::to_string(finding.item)) + ": " + finding.what +
         "\n";
}

/// The digests under the names that the files have on the disk, whatever case a names file gave them.
std::string manifestOf(ConsoleHost& host, std::vector<DigestedFile> files) {
  for (DigestedFile& file : files) {
    const bool hasFolder = file.name.find('\\') != std::string::npos;
    file.name = host.diskName(hasFolder ? file.name : host.currentFolder() + "\\" + file.name);
  }
  return manifestText(files);
}

int printVerification(ConsoleHost& host, const proof::Verification& verification, const std::string& manifest,
                      bool json) {
  if (!manifest.empty()) {
    if (const auto failure = host.replaceFile(manifest, manifestOf(host, verification.files))) {
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

proof::Verification verificationOf(ConsoleHost& host, const std::string& namesFile,
                                   const proof::ConversionToProve& conversion) {
  return proof::verify(host, proof::analyseAgain(host, namesFile), conversion);
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
  ConsoleHost host;
  const std::string manifest = options.manifest.empty() ? "" : host.fullName(options.manifest);
  const proof::ConversionToProve conversion{host.fullName(options.result), std::nullopt};
  return runOnSelection(host, options.selection, [&](const std::string& namesFile) {
    return printVerification(host, verificationOf(host, namesFile, conversion), manifest, options.json);
  });
}

}  // namespace kiv
