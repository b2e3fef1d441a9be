#include "report_page/page_template.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::report::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(PageTemplate, ReplacesNamesOnce) {
  EXPECT_EQ(filledTemplate("<p>[[a]]</p>[[b]]", {{"a", "[[b]]"}, {"b", "x"}}), "<p>[[b]]</p>x");
}

TEST(PageTemplate, ALongContentIsAppendedWhereItGoes) {
  const TemplateContent b([](std::string& page) { page += "[[a]]"; });
  EXPECT_EQ(filledTemplate("<p>[[a]]</p>[[b]]!", {{"a", "x"}, {"b", b}}), "<p>x</p>[[a]]!");
}

TEST(PageTemplate, LeavesOutWhatHasNoContent) {
  EXPECT_EQ(filledTemplate("a[[b]]c", {}), "ac");
  EXPECT_EQ(filledTemplate("a[[b", {}), "a[[b");
}

TEST(PageTemplate, LetsOnlyItsOwnStyleAndScriptRun) {
  // The digests of these two texts in base64, as other tools give them.
  EXPECT_EQ(contentPolicy("", "abc"),
            "default-src 'none'; script-src 'sha256-ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0='; style-src "
            "'sha256-47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU='; base-uri 'none'; form-action 'none'");
}

TEST(PageTemplate, HasPartsThatDoNotEndTheirElements) {
  for (const PageKind kind : {PageKind::report, PageKind::survey}) {
    const PageParts parts = partsOf(kind);
    EXPECT_GT(parts.html.size(), 50U);
    EXPECT_THAT(std::string(parts.script), Not(HasSubstr("</script")));
    EXPECT_THAT(std::string(parts.script), Not(HasSubstr("<!--")));
    EXPECT_THAT(std::string(parts.style), Not(HasSubstr("</style")));
  }
}

TEST(PageTemplate, CompletesAPageWithItsPolicy) {
  const PageParts parts = partsOf(PageKind::report);
  const std::string page = completePage(PageKind::report, {{"title", "SYMPH"}});
  EXPECT_THAT(page, HasSubstr("content=\"" + contentPolicy(parts.style, parts.script) + "\""));
  EXPECT_THAT(page, HasSubstr("<script>" + std::string(parts.script) + "</script>"));
  EXPECT_THAT(page, HasSubstr("<style>" + std::string(parts.style) + "</style>"));
  EXPECT_THAT(page, HasSubstr("<title>SYMPH: KivSystem report</title>"));
}

}  // namespace
}  // namespace kiv::report::test
