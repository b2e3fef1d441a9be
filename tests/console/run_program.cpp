#include "tests/console/run_program.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <stdlib.h>  // mkdtemp
#include <sys/wait.h>
#include <unistd.h>

#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

fs::path newFolder() {
  std::string path = (fs::temp_directory_path() / "kivsys-test-XXXXXX").string();
  EXPECT_NE(::mkdtemp(path.data()), nullptr);
  return fs::canonical(path);
}

std::string contentOf(const fs::path& path) {
  const std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return file ? content.str() : "(no file)";
}

std::string quoted(const std::string& word) {
  std::string result = "'";
  for (const char c : word) {
    result += c == '\'' ? "'\\''" : std::string(1, c);
  }
  return result + "'";
}

std::string commandOf(const std::vector<std::string>& arguments) {
  std::string command = quoted(KIVSYS_PROGRAM);
  for (const std::string& argument : arguments) {
    command += " " + quoted(argument);
  }
  return command;
}

}  // namespace

Workplace::Workplace() : path_(newFolder()), outside_(newFolder()) {
  fs::create_directory(outside_ / "tmp");
}

Workplace::~Workplace() {
  EXPECT_EQ(filesIn(outside_ / "tmp"), std::vector<std::string>{}) << "temporary files are left";
  fs::remove_all(path_);
  fs::remove_all(outside_);
}

fs::path Workplace::stateFolder() const {
  return outside_ / "state";
}

std::string Workplace::corePath(const std::string& file) const {
  std::string path = file.empty() ? path_.string() : (path_ / file).string();
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string Workplace::capitals(const std::string& file) const {
  std::string path = corePath(file);
  std::transform(path.begin(), path.end(), path.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return path;
}

void Workplace::write(const std::string& file, const std::string& content) const {
  fs::create_directories((path_ / file).parent_path());
  std::ofstream(path_ / file, std::ios::binary) << content;
}

std::string Workplace::read(const std::string& file) const {
  return contentOf(path_ / file);
}

Ended Workplace::run(const std::string& command, const std::string& folder, const std::string& input) const {
  std::ofstream(outside_ / "in", std::ios::binary) << input;
  const std::string line =
      "cd " + quoted((path_ / folder).string()) + " && TMPDIR=" + quoted((outside_ / "tmp").string()) +
      " XDG_STATE_HOME=" + quoted(stateFolder().string()) + " " + command + " <" + quoted((outside_ / "in").string()) +
      " >" + quoted((outside_ / "out").string()) + " 2>" + quoted((outside_ / "error").string());
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(outside_ / "out"), contentOf(outside_ / "error")};
}

Ended Workplace::kivsys(const std::vector<std::string>& arguments, const std::string& folder,
                        const std::string& input) const {
  Ended ended = run(commandOf(arguments), folder, input);
  expectValidObjects(arguments, ended.out);
  return ended;
}

Ended Workplace::shell(const std::string& line, const std::string& folder) const {
  const std::string programs = fs::path(KIVSYS_PROGRAM).parent_path().string();
  const std::string examples = fs::path(EXAMPLE_FOLDER).parent_path().string();
  return run("PATH=" + quoted(programs) + ":\"$PATH\" examples=" + quoted(examples) + " sh -c " +
                 quoted("{ " + line + "\n} 2>&1"),
             folder, "");
}

Ended Workplace::kivsysIntoFullDevice(const std::vector<std::string>& arguments) const {
  // What is written to standard output by then goes to the device, too.
  return run("sh -c 'exec \"$@\" >/dev/full' sh " + commandOf(arguments), ".", "");
}

Ended Workplace::kivsysAsOwner(const std::vector<std::string>& arguments) const {
  const std::string withoutRights = "setpriv --bounding-set=-dac_override,-dac_read_search ";
  return run((::geteuid() == 0 ? withoutRights : "") + commandOf(arguments), ".", "");
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace kiv::test
