#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/support/pages.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;
using Lines = std::vector<std::string>;

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

std::string document(const std::string& name) {
  return contentOf(std::filesystem::path(DOCS_FOLDER) / name);
}

/// The codes that messages have, as their header lists them.
std::set<std::string> codesOfMessages() {
  return firstGroupsIn(contentOf(CODES_HEADER), R"re(string_view \w+ = "([^"]+)")re");
}

/// The blocks of a document that hold JSON.
std::vector<Json> shownJson() {
  std::vector<Json> shown;
  const std::string text = document("json.md");
  const std::string start = "```json\n";
  for (std::size_t at = text.find(start); at != std::string::npos; at = text.find(start, at + 1)) {
    const std::size_t from = at + start.size();
    shown.push_back(Json::parse(text.substr(from, text.find("```", from) - from)));
  }
  return shown;
}

/// The page that the document shows.
std::string shownPage() {
  std::istringstream lines(document("json.md"));
  const std::string indent = "    ";
  std::string text;
  for (std::string line; std::getline(lines, line);) {
    text += line.starts_with(indent) ? line.substr(indent.size()) + "\n" : "";
  }
  return text;
}

std::vector<Json> linesOf(const std::string& text) {
  std::vector<Json> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(Json::parse(line));
  }
  return lines;
}

class JsonOutput : public ::testing::Test {
 protected:
  Workplace place;
  const std::string faulty =
      "staff 2 at 0 instrument 105\nstaff 1 at 0 instrument 105\nrest 1 at 20 kind -2 cue 105\nbarline 1 at 0 spans "
      "2\n";
  const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";
};

TEST_F(JsonOutput, RecordsAsTheDocumentShowsThem) {
  place.write("X1.MUS", page(shownPage()));
  const Json object = Json::parse(place.kivsys({"analyze", "--json", "X1.MUS"}).out);
  const std::string escaped = with(place.capitals(""), "\\", "\\\\");
  const std::string records = with(object["problems"].dump(), escaped, "\\\\MUSIC");
  const Json problems = Json::parse(with(records, place.path().string(), "/music"));
  const std::vector<Json> shown = shownJson();
  ASSERT_EQ(shown.size(), 2U);
  for (const Json& record : shown) {
    EXPECT_NE(std::find(problems.begin(), problems.end(), record), problems.end()) << record << problems;
  }
}

TEST_F(JsonOutput, FitsTheSchema) {
  place.write("X1.MUS", page(faulty));
  place.write("X2.MUS", page(bass));
  place.write("X3.MUS", page("words 99\n"));
  const auto object = [&](const Lines& arguments) { return Json::parse(place.kivsys(arguments).out); };
  EXPECT_EQ(schemaErrors(object({"analyze", "--json", "X1.MUS", "X2.MUS"}), "analyze"), Lines());
  EXPECT_EQ(schemaErrors(object({"analyze", "--json", "X1.MUS", "X3.MUS"}), "analyze"), Lines());
  EXPECT_EQ(schemaErrors(object({"analyze", "--json", "--like-panel", "GONE1.MUS"}), "analyze"), Lines());
  EXPECT_EQ(schemaErrors(object({"convert", "--json", "X1.MUS", "X2.MUS"}), "convert"), Lines());
  EXPECT_EQ(schemaErrors(object({"convert", "--json", "X3.MUS"}), "convert"), Lines());
  EXPECT_EQ(schemaErrors(object({"trace", "--json", "X2.MUS"}), "convert"), Lines());
  EXPECT_EQ(schemaErrors(object({"sort", "--json", "X2.MUS"}), "sort"), Lines());
  EXPECT_NE(schemaErrors(object({"sort", "--json", "X2.MUS"}), "analyze"), Lines())
      << "the check finds what does not fit";
}

TEST_F(JsonOutput, FitsTheSchemaOnlyWithAllMembersAndNoOthers) {
  place.write("X2.MUS", page(bass));
  Json object = Json::parse(place.kivsys({"sort", "--json", "X2.MUS"}).out);
  object["surprise"] = 1;
  EXPECT_EQ(schemaErrors(object, "sort"), Lines{"sort has surprise"});
  object.erase("surprise");
  object.erase("files");
  EXPECT_EQ(schemaErrors(object, "sort"), Lines{"sort has no files"});
  object["files"] = "one";
  EXPECT_EQ(schemaErrors(object, "sort"), Lines{"sort/files is \"one\""});
}

TEST_F(JsonOutput, ExampleFitsTheSchemaAndLocatesEveryStaff) {
  Lines arguments = buildExample(place);
  arguments.insert(arguments.begin(), {"analyze", "--json"});
  const Json object = Json::parse(place.kivsys(arguments).out);
  EXPECT_EQ(schemaErrors(object, "analyze"), Lines());
  EXPECT_EQ(object["problems"], Json::array());
  ASSERT_EQ(object["layouts"].size(), 3U);
  EXPECT_EQ(object["layouts"][0]["systems"], Json::array({{{"first", 4}, {"last", 7}}}));
  ASSERT_EQ(object["layouts"][1]["deviations"].size(), 20U);
  const Json last = object["layouts"][1]["deviations"][19];
  EXPECT_EQ(last["instrument"], 110);
  EXPECT_EQ(last["system"], 3);
  EXPECT_EQ(last["file"], place.capitals("SYMPH003B.MUS"));
  EXPECT_EQ(last["staff"], 3);
  const std::string dump = place.kivsys({"dump", "SYMPH003B.MUS"}).out;
  const std::string item = std::to_string(last["item"].get<int>()) + " @" + std::to_string(last["offset"].get<int>());
  const std::size_t at = dump.find(" " + item + " ");
  ASSERT_NE(at, std::string::npos) << item;
  EXPECT_NE(dump.substr(at, dump.find('\n', at) - at).find("staff 3 at 0"), std::string::npos);
}

TEST_F(JsonOutput, StreamIsTheSameLineByLine) {
  place.write("X1.MUS", page(faulty));
  place.write("X2.MUS", page(bass));
  const Ended ended = place.kivsys({"analyze", "--jsonl", "X1.MUS", "X2.MUS"});
  EXPECT_EQ(ended.status, 0);
  const std::vector<Json> lines = linesOf(ended.out);
  std::string records;
  for (const Json& line : lines) {
    EXPECT_EQ(schemaErrors(line, "line"), Lines());
    records += line["record"].get<std::string>() + " ";
  }
  EXPECT_EQ(records,
            "problem problem problem layout layout deviation deviation deviation instrument instrument outcome ");
  const Json object = Json::parse(place.kivsys({"analyze", "--json", "X1.MUS", "X2.MUS"}).out);
  Json first = lines[0];
  first.erase("record");
  first.erase("schema_version");
  EXPECT_EQ(first, object["problems"][0]);
  EXPECT_EQ(lines.back()["messages"], object["messages"]);
}

TEST_F(JsonOutput, EveryObjectHasTheVersionOfItsSchema) {
  place.write("X1.MUS", page(faulty));
  place.write("X2.MUS", page(bass));
  const std::vector<Lines> runs = {{"analyze", "--json", "X1.MUS", "X2.MUS"},
                                   {"analyze", "--jsonl", "X1.MUS", "X2.MUS"},
                                   {"convert", "--json", "--verify", "X1.MUS", "X2.MUS"},
                                   {"convert", "--json", "--dry-run", "X1.MUS", "X2.MUS"},
                                   {"trace", "--json", "X1.MUS", "X2.MUS"},
                                   {"sort", "--json", "X2.MUS"},
                                   {"verify", "--json", "--result", "WORK0001.MUS", "X1.MUS", "X2.MUS"},
                                   {"survey", "--json", "."}};
  for (const Lines& arguments : runs) {
    const std::string out = place.kivsys(arguments).out;
    for (const Json& object : arguments[1] == "--jsonl" ? linesOf(out) : std::vector{Json::parse(out)}) {
      EXPECT_EQ(object.value("schema_version", 0), 2) << arguments.front() << object;
    }
  }
}

/// Whether words of lower-case letters and digits are joined by single underscores, and a letter comes first.
bool isSnakeCase(const std::string& name) {
  return name.find_first_of("abcdefghijklmnopqrstuvwxyz") == 0 &&
         name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_") == std::string::npos &&
         name.find("__") == std::string::npos && !name.ends_with('_');
}

/// The names of all members of a value and of the values in it that are not snake_case.
Lines otherNames(const Json& value) {
  Lines names;
  for (const auto& [name, member] : value.items()) {
    if (value.is_object() && !isSnakeCase(name)) {
      names.push_back(name);
    }
    const Lines inner = member.is_structured() ? otherNames(member) : Lines();
    names.insert(names.end(), inner.begin(), inner.end());
  }
  return names;
}

TEST_F(JsonOutput, EveryNameIsSnakeCase) {
  const Json definitions = documentedSchema()["$defs"];
  for (const auto& [definition, rule] : definitions.items()) {
    const Json members = rule.value("properties", Json::object());
    for (const auto& [name, member] : members.items()) {
      EXPECT_EQ(otherNames(Json{{name, 0}}), Lines()) << definition;
    }
  }
  Lines arguments = buildExample(place);
  arguments.insert(arguments.begin(), {"convert", "--json", "--verify"});
  EXPECT_EQ(otherNames(Json::parse(place.kivsys(arguments).out)), Lines());
}

TEST_F(JsonOutput, EveryCommandThatPrintsItHasADefinition) {
  const Json definitions = documentedSchema()["$defs"];
  std::istringstream help(place.kivsys({"--help"}).out);
  int commands = 0;
  for (std::string line; std::getline(help, line);) {
    const std::string command = line.starts_with("  ") ? line.substr(2, line.find(' ', 2) - 2) : "";
    if (!command.empty() && place.kivsys({command, "--help"}).out.find("\n  --json ") != std::string::npos) {
      EXPECT_TRUE(definitions.contains(command)) << command;
      ++commands;
    }
  }
  EXPECT_GE(commands, 6);
}

TEST_F(JsonOutput, OneFormAtATime) {
  place.write("X1.MUS", page(bass));
  EXPECT_EQ(place.kivsys({"analyze", "--json", "--jsonl", "X1.MUS"}).status, 2);
}

TEST_F(JsonOutput, ProblemsOfAConversionToo) {
  place.write("X1.MUS", page(faulty));
  place.write("X2.MUS", page(bass));
  const Json object = Json::parse(place.kivsys({"convert", "--dry-run", "--json", "X1.MUS", "X2.MUS"}).out);
  ASSERT_GE(object["problems"].size(), 2U);
  EXPECT_EQ(object["problems"][0]["code"], "duplicate-instrument-id");
  EXPECT_EQ(object["problems"][0]["item"], 2);
}

TEST_F(JsonOutput, EveryCodeIsInTheSchemaAndInTheDocument) {
  const std::set<std::string> codes = codesOfMessages();
  const Json listed = documentedSchema()["$defs"]["code"]["enum"];
  EXPECT_EQ(std::set<std::string>(listed.begin(), listed.end()), codes);
  const std::string text = document("json.md");
  for (const std::string& code : codes) {
    EXPECT_NE(text.find("`" + code + "`"), std::string::npos) << code;
  }
}

}  // namespace
}  // namespace kiv::test
