#include "report_page/survey_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::report::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(SurveyPage, EncodesWhatALinkCannotHave) {
  EXPECT_EQ(encodedLink("../my reports/A-1.html"), "../my%20reports/A-1.html");
  EXPECT_EQ(encodedLink("javascript:alert(1)"), "javascript%3Aalert%281%29");
  EXPECT_EQ(encodedLink("L\xC3\xB6.html?a#b"), "L%C3%B6.html%3Fa%23b");
}

TEST(SurveyPage, EscapesTexts) {
  SurveyRow row;
  row.folder = "<b>";
  row.prefix = "\"><script>";
  row.problems = {"</td><img>"};
  const std::string page = surveyPage({"<i>", "now", false, {row}});
  for (const char* markup : {"<b>", "\"><script>", "<img>", "<i>"}) {
    EXPECT_THAT(page, Not(HasSubstr(markup)));
  }
  EXPECT_THAT(page, HasSubstr("<td>&lt;b&gt;</td>"));
}

TEST(SurveyPage, SaysWhenPiecesAreMissing) {
  EXPECT_THAT(surveyPage({"music", "now", true, {}}), HasSubstr("The survey was interrupted"));
  EXPECT_THAT(surveyPage({"music", "now", false, {}}), Not(HasSubstr("The survey was interrupted")));
}

}  // namespace
}  // namespace kiv::report::test
