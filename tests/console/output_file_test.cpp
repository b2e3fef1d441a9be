#include "apps/kivsys/safety/output_file.h"

#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "platform/console/native_system.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

/// Files that take the name of an output after the run has looked for one.
class OutputFileTest : public ::testing::Test {
 protected:
  std::string path() const { return (folder.path() / "out").string(); }
  OutputFilePlan plan(OutputKind kind) const { return {"output", NativeSystem::coreName(path()), kind}; }
  void write(const std::string& text) const { std::ofstream(path(), std::ios::binary) << text; }
  std::string read() const {
    std::ifstream file(path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  TemporaryFolder folder;
  NativeSystem system;
};

TEST_F(OutputFileTest, AFileOfAnotherKindThatHasComeMeanwhileStays) {
  for (const OutputKind kind : {OutputKind::drawing, OutputKind::manifest, OutputKind::corrections}) {
    ASSERT_TRUE(refusalsOfOutput(system, plan(kind), InputFiles()).empty());
    write("the only copy of my notes");
    const auto failure = writeOutput(system, plan(kind), "new");
    ASSERT_TRUE(failure);
    EXPECT_NE(failure->find(", and is not replaced"), std::string::npos) << *failure;
    EXPECT_EQ(read(), "the only copy of my notes");
    std::filesystem::remove(path());
  }
}

TEST_F(OutputFileTest, AFileOfTheSameKindIsReplaced) {
  write("<svg></svg>");
  EXPECT_EQ(writeOutput(system, plan(OutputKind::drawing), "<svg />"), std::nullopt);
  EXPECT_EQ(read(), "<svg />");
}

TEST_F(OutputFileTest, APageThatIsToBeKeptIsKept) {
  EXPECT_EQ(writeOutput(system, plan(OutputKind::page), "first", OldFile::kept), std::nullopt);
  EXPECT_TRUE(writeOutput(system, plan(OutputKind::page), "second", OldFile::kept));
  EXPECT_EQ(read(), "first");
  EXPECT_EQ(writeOutput(system, plan(OutputKind::page), "third", OldFile::alwaysReplaced), std::nullopt);
  EXPECT_EQ(read(), "third");
}

}  // namespace
}  // namespace kiv::test
