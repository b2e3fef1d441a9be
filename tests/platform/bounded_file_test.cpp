#include "platform/bounded_file.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

TEST(BoundedFile, AFileWithinTheLimitIsReadWhole) {
  FakeHost host;
  host.addFile("C:\\A.TXT", "12345");
  for (const std::size_t limit : {5U, 6U, 1000U}) {
    const BoundedContent content = readBounded(host, "C:\\A.TXT", limit);
    EXPECT_EQ(content.bytes, "12345");
    EXPECT_FALSE(content.isTooLarge);
  }
}

TEST(BoundedFile, ALargerFileIsNotRead) {
  FakeHost host;
  host.addFile("C:\\A.TXT", "12345");
  const BoundedContent content = readBounded(host, "C:\\A.TXT", 4);
  EXPECT_EQ(content.bytes, std::nullopt);
  EXPECT_TRUE(content.isTooLarge);
}

TEST(BoundedFile, AFileThatCannotBeReadIsNotTooLarge) {
  FakeHost host;
  const BoundedContent content = readBounded(host, "C:\\NONE.TXT", 4);
  EXPECT_EQ(content.bytes, std::nullopt);
  EXPECT_FALSE(content.isTooLarge);
}

/// Never ends, and does not know its size.
class Endless : public FakeHost {
 public:
  std::size_t given = 0;

  std::unique_ptr<InputFile> openInput(const std::string& /*name*/) override {
    class Input : public InputFile {
     public:
      explicit Input(std::size_t& given) : given_(given) {}
      std::optional<std::size_t> read(std::span<char> buffer) override {
        given_ += buffer.size();
        return buffer.size();
      }

     private:
      std::size_t& given_;
    };
    return std::make_unique<Input>(given);
  }
};

TEST(BoundedFile, AFileOfUnknownSizeIsReadOneByteBeyondTheLimit) {
  Endless host;
  EXPECT_TRUE(readBounded(host, "C:\\A.TXT", 100'000).isTooLarge);
  EXPECT_EQ(host.given, 100'001U);
}

TEST(BoundedFile, TheLimitIsSaidInBytes) {
  EXPECT_EQ(tooLarge(4, "a page"), "has more than 4 bytes, the limit for a page");
}

}  // namespace
}  // namespace kiv::test
