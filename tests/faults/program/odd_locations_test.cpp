#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/mount.h>

#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

const std::string notWritten = ": Open of output MUS file failed in ";
constexpr std::size_t longestName = 255;  // of a file, on common file systems

std::vector<std::string> conversion(const std::string& page, const std::string& result) {
  return {"convert", "--force", "--folder", "run", "--result", result, page};
}

class OddLocations : public testing::Test {
 protected:
  OddLocations() : soloPage(work.page(solo)) {}

  void addPage(const std::string& name) const {
    fs::create_directories((work.path() / name).parent_path());
    work.write(name, soloPage);
  }
  Ended convert(const std::string& page, const std::string& result) const {
    return work.kivsys(conversion(page, result));
  }
  void expectUntouched(const std::string& name) const { EXPECT_EQ(work.files().at(name), soloPage); }
  static void expectNormalEnd(const Ended& ended) { EXPECT_EQ(ended.status, 0) << ended.error; }
  /// The last line says what could not be written, with its folder and the system's reason.
  static void expectEnd(const Ended& ended, const std::string& text) {
    EXPECT_EQ(ended.status, 1);
    EXPECT_TRUE(ended.error.ends_with(text)) << ended.error;
  }
  std::string notWrittenInOut(const std::string& reason) const {
    return notWritten + (work.path() / "out").string() + ": " + reason + "\n";
  }

  WorkingFolder work{{}};
  std::string soloPage;
};

// --- names ---

TEST_F(OddLocations, FoldersWithBlanksAndAccents) {
  const std::string folder = "m/la mer  pièce n° 1 (ß Ελλάδα)";
  addPage(folder + "/X001.MUS");
  fs::create_directory(work.path() / "out/é à");
  expectNormalEnd(convert(folder + "/X001.MUS", "out/é à/WORK0001.MUS"));
  EXPECT_TRUE(work.files().contains("out/é à/WORK0001.MUS"));
  expectUntouched(folder + "/X001.MUS");
}

TEST_F(OddLocations, PageNamesWithCharactersThatTheConventionDoesNotKnow) {
  for (const std::string name : {"PAGE 1.MUS", "SUITE,1.MUS", "PIÈCE1.MUS", "'$(id)'1.MUS", "%PATH%1.MUS"}) {
    addPage("m/" + name);
    const Ended ended = convert("m/" + name, "out/WORK0001.MUS");
    EXPECT_EQ(ended.status, 1) << name;
    EXPECT_NE(ended.error.find(": File naming problem; "), std::string::npos) << ended.error;
    expectUntouched("m/" + name);
  }
}

TEST_F(OddLocations, ACommaInAFolderEndsTheNameInTheReport) {
  addPage("m/a,b/X001.MUS");
  expectNormalEnd(work.kivsys({"analyze", "--folder", "run", "m/a,b/X001.MUS"}));
  const Ended ended = convert("m/a,b/X001.MUS", "out/WORK0001.MUS");
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find(" m/A: Structural error in MUS file\n"), std::string::npos) << ended.error;
  EXPECT_FALSE(work.files().contains("out/WORK0001.MUS"));
}

TEST_F(OddLocations, PagesWithTheLongestNames) {
  for (const std::size_t length : {std::size_t{250}, longestName}) {
    const std::string name = std::string(length - 7, 'P') + "001.MUS";
    addPage("m/" + name);
    expectNormalEnd(convert("m/" + name, "out/WORK0001.MUS"));
    EXPECT_TRUE(work.files().contains("out/WORK0001.MUS"));
  }
  const Ended ended = convert("m/" + std::string(longestName - 6, 'P') + "001.MUS", "out/WORK0001.MUS");
  EXPECT_EQ(ended.status, 2);
  EXPECT_TRUE(ended.error.ends_with("001.MUS: File name too long\n")) << ended.error;
}

TEST_F(OddLocations, ResultsWithTheLongestNames) {
  addPage("m/X001.MUS");
  const std::string longest = "out/" + std::string(longestName - 8, 'R') + "0001.MUS";
  expectNormalEnd(convert("m/X001.MUS", longest));
  EXPECT_TRUE(work.files().contains(longest));
  expectEnd(convert("m/X001.MUS", "out/" + std::string(longestName - 7, 'R') + "0001.MUS"),
            notWrittenInOut("File name too long"));
  const Files files = work.files();
  EXPECT_EQ(std::count_if(files.begin(), files.end(), [](const auto& file) { return file.first.starts_with("out/"); }),
            1);
}

// --- folders that cannot be written ---

TEST_F(OddLocations, AResultFolderThatIsAFile) {
  addPage("m/X001.MUS");
  work.write("out/file", "no folder");
  const Ended ended = convert("m/X001.MUS", "out/file/WORK0001.MUS");
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: not a folder: out/file/\n");
  EXPECT_EQ(work.files().at("out/file"), "no folder");
}

TEST_F(OddLocations, AResultThatIsAFolder) {
  addPage("m/X001.MUS");
  addPage("out/WORK0001.MUS/inside");
  expectEnd(convert("m/X001.MUS", "out/WORK0001.MUS"), notWrittenInOut("Is a directory"));
  expectUntouched("out/WORK0001.MUS/inside");
}

TEST_F(OddLocations, AResultFolderThatMayOnlyBeRead) {
  addPage("m/X001.MUS");
  work.write("out/WORK0001.MUS", "old");
  work.lock("out");
  const Files before = work.files();
  expectEnd(convert("m/X001.MUS", "out/WORK0001.MUS"), notWrittenInOut("Permission denied"));
  Files after = work.files();
  std::erase_if(after, [](const auto& file) { return file.first.starts_with("run/"); });
  EXPECT_EQ(after, before);
}

TEST_F(OddLocations, ACurrentFolderThatMayOnlyBeRead) {
  addPage("m/X001.MUS");
  work.lock("run");
  const Files before = work.files();
  expectEnd(convert("m/X001.MUS", "out/WORK0001.MUS"),
            "kivsys: Failed to create report file: KivSystem2.TXT in " + (work.path() / "run").string() +
                ": Permission denied; --folder DIR writes report and verdict into another folder\n");
  EXPECT_EQ(work.files(), before);
}

TEST_F(OddLocations, ACurrentFolderThatIsNone) {
  addPage("m/X001.MUS");
  fs::remove(work.path() / "run");
  work.write("run", "");
  EXPECT_EQ(convert("m/X001.MUS", "out/WORK0001.MUS").status, 2);
}

// --- a full disk ---

/// A small disk in memory, mounted as long as this object exists.
class SmallDisk {
 public:
  explicit SmallDisk(const fs::path& at) : at_(at) {
    fs::create_directory(at);
    mounted_ = ::mount("tmpfs", at.c_str(), "tmpfs", 0, "size=256k") == 0;
    error_ = errno;
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    if (mounted_) {
      ::umount2(at_.c_str(), MNT_DETACH);
    }
  }
  bool mounted() const { return mounted_; }
  const char* reason() const { return std::strerror(error_); }
  /// Fills the disk until only this number of bytes is free.
  void leave(std::uintmax_t bytes) const {
    fs::remove(at_ / "filler");
    const std::uintmax_t available = fs::space(at_).available;
    std::ofstream(at_ / "filler", std::ios::binary) << std::string(available > bytes ? available - bytes : 0, 'f');
  }

 private:
  fs::path at_;
  bool mounted_ = false;
  int error_ = 0;
};

TEST_F(OddLocations, AFullDiskHoldsResultsWholeOrNotAtAll) {
  const SmallDisk disk(work.path() / "disk");
  if (!disk.mounted()) {
    GTEST_SKIP() << "no small disk can be mounted here (" << disk.reason() << "); other tests inject the same error";
  }
  constexpr std::uintmax_t block = 4096;
  const WorkingFolder onDisk({{"m/X001.MUS", work.page(duo)}, {"m/X003.MUS", soloPage}}, work.path() / "disk");
  const Files before = onDisk.files();
  const std::vector<std::string> run = conversionOf({"X001.MUS", "X003.MUS"});
  expectNormalEnd(onDisk.kivsys(run));
  const Files expected = onDisk.files();
  int full = 0;
  for (std::uintmax_t freeBlocks = 0; freeBlocks <= 8; ++freeBlocks) {
    SCOPED_TRACE(freeBlocks);
    onDisk.reset(before);
    disk.leave(freeBlocks * block);
    const Ended ended = onDisk.kivsys(run);
    full += ended.status;
    const std::string notWrittenHere = notWritten + (onDisk.path() / "out").string() + ": No space left on device\n";
    EXPECT_TRUE(ended.status == 0 || ended.error.ends_with(notWrittenHere) ||
                ended.error.ends_with("kivsys: Run-time error: No space left on device; KivSystem2.TXT\n") ||
                ended.error.ends_with("kivsys: Run-time error: No space left on device; KivSystem1.TXT\n") ||
                ended.error.ends_with("kivsys: Failed to create report file: KivSystem2.TXT\n") ||
                ended.error.ends_with("kivsys: cannot make a names file in the folder for temporary files\n"))
        << ended.error;
    for (const auto& [name, content] : onDisk.files()) {
      ASSERT_TRUE(expected.contains(name)) << name;
      EXPECT_TRUE(name.starts_with("run/") || content == expected.at(name)) << name;
    }
  }
  EXPECT_GE(full, 3);
  EXPECT_LT(full, 9);
}

}  // namespace
}  // namespace kiv::test
