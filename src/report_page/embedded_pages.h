#pragma once

#include <string_view>

/// The files of src/report_page/page, as cmake/EmbedPages.cmake puts them into the program.
namespace kiv::report::embedded {
extern const std::string_view report_html;
extern const std::string_view report_css;
extern const std::string_view report_js;
extern const std::string_view survey_html;
extern const std::string_view survey_css;
extern const std::string_view survey_js;
}  // namespace kiv::report::embedded
