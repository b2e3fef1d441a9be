#include "tests/faults/program/working_folder.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <stdlib.h>  // mkdtemp
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

fs::path newFolder(const fs::path& below) {
  std::string path = (below / "kiv-faults-XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr) {
    throw std::runtime_error("no temporary folder");
  }
  return fs::canonical(path);
}

std::string contentOf(const fs::path& path) {
  const std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

void redirect(int file, const fs::path& path, int flags) {
  const int opened = ::open(path.c_str(), flags, 0600);
  if (opened < 0 || ::dup2(opened, file) < 0) {
    ::_exit(126);
  }
  ::close(opened);
}

std::vector<std::string> withPages(std::vector<std::string> arguments, const std::vector<std::string>& pages) {
  for (const std::string& page : pages) {
    arguments.push_back("m/" + page);
  }
  return arguments;
}

}  // namespace

WorkingFolder::WorkingFolder(const Files& files, const fs::path& below)
    : path_(newFolder(below)), outside_(newFolder(fs::temp_directory_path())) {
  for (const char* const folder : {"m", "out", "run", "tmp"}) {
    fs::create_directory(path_ / folder);
  }
  reset(files);
}

WorkingFolder::~WorkingFolder() {
  std::error_code ignored;
  if (locked_) {
    for (const auto& entry : fs::directory_iterator(path_)) {
      fs::permissions(entry.path(), fs::perms(0755), ignored);
    }
  }
  fs::remove_all(path_, ignored);
  fs::remove_all(outside_, ignored);
}

Files WorkingFolder::files() const {
  Files all;
  for (const auto& entry : fs::recursive_directory_iterator(path_)) {
    if (entry.is_regular_file()) {
      all[fs::relative(entry.path(), path_).string()] = contentOf(entry.path());
    }
  }
  return all;
}

void WorkingFolder::reset(const Files& files) const {
  for (const auto& [name, content] : this->files()) {
    fs::remove(path_ / name);
  }
  fs::remove_all(outside_ / "state");
  for (const char* const folder : {"m", "out", "run"}) {
    fs::remove(path_ / folder / ".kivsys");
  }
  for (const auto& [name, content] : files) {
    write(name, content);
  }
}

void WorkingFolder::write(const std::string& name, const std::string& content) const {
  std::ofstream(path_ / name, std::ios::binary) << content;
}

void WorkingFolder::lock(const std::string& folder) {
  // Permissions do not restrict root, so the program runs as nobody, who must be able to access the rest.
  for (const auto& entry : fs::recursive_directory_iterator(path_)) {
    fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0777 : 0666));
  }
  fs::permissions(path_, fs::perms(0755));
  fs::permissions(path_ / folder, fs::perms(0555));
  locked_ = true;
}

Ended WorkingFolder::kivsys(const std::vector<std::string>& arguments, const Faults& faults) const {
  std::vector<std::string> command = {KIVSYS_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  std::vector<std::string> environment = {"TMPDIR=" + (path_ / "tmp").string(),
                                          "XDG_STATE_HOME=" + (outside_ / "state").string()};
  if (!faults.empty()) {
    environment.push_back(std::string("LD_PRELOAD=") + FAILING_CALLS);
  }
  for (const auto& [name, value] : faults) {
    environment.push_back("KIV_FAULT_" + name + "=" + value);
  }
  const std::vector<char*> argv = pointersTo(command);
  const std::vector<char*> envp = pointersTo(environment);
  const pid_t child = ::fork();
  if (child == 0) {
    redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
    redirect(STDOUT_FILENO, outside_ / "out", O_WRONLY | O_CREAT | O_TRUNC);
    redirect(STDERR_FILENO, outside_ / "error", O_WRONLY | O_CREAT | O_TRUNC);
    constexpr uid_t nobody = 65534;
    const bool isNobody = locked_ && ::geteuid() == 0 && ::setuid(nobody) == 0;
    if (::chdir(path_.c_str()) == 0 && (!locked_ || isNobody || ::geteuid() != 0)) {
      ::execve(argv[0], argv.data(), envp.data());
    }
    ::_exit(127);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child) {
    throw std::runtime_error("the program was not started");
  }
  return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status), contentOf(outside_ / "out"),
          contentOf(outside_ / "error")};
}

std::string WorkingFolder::page(const std::string& text) const {
  write("page.txt", text);
  static_cast<void>(kivsys({"build", "page.txt", "page.mus"}));
  std::string content = contentOf(path_ / "page.mus");
  fs::remove(path_ / "page.txt");
  fs::remove(path_ / "page.mus");
  return content;
}

std::vector<std::string> analysisOf(const std::vector<std::string>& pages) {
  return withPages({"analyze", "--folder", "run"}, pages);
}

std::vector<std::string> conversionOf(const std::vector<std::string>& pages) {
  return withPages({"convert", "--jobs", "1", "--folder", "run", "--result", "out/WORK0001.MUS"}, pages);
}

std::vector<std::string> backgroundConversionOf(const std::vector<std::string>& pages) {
  return withPages({"convert", "--folder", "run", "--result", "out/WORK0001.MUS"}, pages);
}

}  // namespace kiv::test
