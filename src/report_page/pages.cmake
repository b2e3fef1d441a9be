# What each embedded text consists of: files of the folder page, one after the other.
set(embedded_texts report_html report_css report_js survey_html survey_css survey_js)
set(report_html report.html)
set(report_css common.css counts.css report.css pictures.css)
set(report_js common.js cells.js map_drawing.js layout_map.js engraving.js pictures.js systems.js proposals.js report.js)
set(survey_html survey.html)
set(survey_css common.css counts.css survey.css)
set(survey_js common.js survey.js)
