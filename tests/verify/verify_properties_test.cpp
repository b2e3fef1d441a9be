#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "tests/properties/groups.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

// The same groups in every run, unless RC_PARAMS is set.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=40", 0);

std::map<std::string, std::string> pagesOf(const Group& group) {
  std::map<std::string, std::string> pages;
  for (const auto& [name, text] : group.pages) {
    pages[name] = page(text);
  }
  return pages;
}

/// The bytes with one of them changed.
std::string tampered(std::string bytes, std::size_t& at) {
  at = *rc::gen::inRange<std::size_t>(0, bytes.size());
  const int bits = *rc::gen::inRange(1, 256);
  bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ static_cast<unsigned>(bits));
  return bytes;
}

constexpr int tamperings = 6;  // of each group

RC_GTEST_PROP(VerifyProperty, EveryConversionIsProved, ()) {
  ConvertedGroup group(pagesOf(*groups(1)), *rc::gen::arbitrary<bool>());
  RC_ASSERT(group.converted());
  const std::string findings = group.findings();
  RC_ASSERT(findings == "");
}

RC_GTEST_PROP(VerifyProperty, EveryConversionWithFittingRestStavesIsProved, ()) {
  ConvertedGroup group(pagesOf(*groups(5)), *rc::gen::arbitrary<bool>(), RestStaves::fitting);
  RC_ASSERT(group.converted());
  const std::string findings = group.findings();
  RC_ASSERT(findings == "");
}

RC_GTEST_PROP(VerifyProperty, NoByteOfAResultWithFittingRestStavesCanBeChanged, ()) {
  ConvertedGroup group(pagesOf(*groups(6)), true, RestStaves::fitting);
  for (int i = 0; i < tamperings; ++i) {
    const int system = *rc::gen::inRange(1, group.systems() + 1);
    const std::string before = group.result(system);
    std::size_t at = 0;
    group.replaceResult(system, tampered(before, at));
    RC_ASSERT(!group.verify().proved());
    group.replaceResult(system, before);
  }
}

RC_GTEST_PROP(VerifyProperty, NoByteOfAResultCanBeChanged, ()) {
  ConvertedGroup group(pagesOf(*groups(2)));
  for (int i = 0; i < tamperings; ++i) {
    const int system = *rc::gen::inRange(1, group.systems() + 1);
    const std::string before = group.result(system);
    std::size_t at = 0;
    group.replaceResult(system, tampered(before, at));
    RC_ASSERT(!group.verify().proved());
    group.replaceResult(system, before);
  }
}

RC_GTEST_PROP(VerifyProperty, NoByteOfReportAndVerdictCanBeChangedButTheTime, ()) {
  ConvertedGroup group(pagesOf(*groups(3)));
  const std::string headLine = group.host.file(reportFile).substr(0, group.host.file(reportFile).find('\r'));
  for (int i = 0; i < tamperings; ++i) {
    const std::string name = *rc::gen::element(reportFile, verdictFile);
    const std::string before = group.host.file(name);
    std::size_t at = 0;
    const std::string after = tampered(before, at);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const bool isInTime = name == reportFile && at < headLine.size() && isDigit(before[at]) && isDigit(after[at]);
    group.host.addFile(name, after);
    RC_ASSERT(group.verify().proved() == isInTime);
    group.host.addFile(name, before);
  }
}

// A byte of an input may be changed only where a conversion ignores it, and so gives the same results.
RC_GTEST_PROP(VerifyProperty, NoByteOfAnInputCanBeChangedThatAConversionUses, ()) {
  auto pages = pagesOf(*groups(4));
  ConvertedGroup group(pages);
  for (int i = 0; i < tamperings; ++i) {
    auto& [name, bytes] = *std::next(pages.begin(), *rc::gen::inRange<int>(0, static_cast<int>(pages.size())));
    const std::string before = bytes;
    std::size_t at = 0;
    bytes = tampered(before, at);
    const ConvertedGroup other(pages);
    const bool isIgnored = other.converted() && other.everythingWritten() == group.everythingWritten();
    group.replaceInput(name, bytes);
    const std::string findings = group.findings();
    RC_ASSERT((findings == "") == isIgnored);
    group.replaceInput(name, before);
    bytes = before;
  }
}

}  // namespace
}  // namespace kiv::test
