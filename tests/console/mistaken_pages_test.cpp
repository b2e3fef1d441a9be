#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Files that were given as pages, and never were pages.
class MistakenPages : public ConsoleConvert {
 protected:
  MistakenPages() {
    addTwo();
    place.write("empty1.mus", "");
    place.write("letter1.mus", "Dear Sir,\nthe score is in the other parcel.\n");
    place.write("umlaut1.mus", "Gr\u00fc\u00dfe an alle\n");
    place.write("text1.txt", fluteAndBass);
    place.write("text1.mus", fluteAndBass);
  }
  std::string after(const std::string& command, const std::string& file) const {
    const Ended ended = place.kivsys({command, file});
    EXPECT_EQ(ended.status, 1) << command << " " << file;
    return ended.error;
  }
};

const std::string emptyWords =
    "the file is empty, and nothing can be recovered from it; use a copy of the page, or leave the file out\n";
const std::string textWords =
    "this is a text, not a page; 'kivsys build' makes pages only of texts that 'kivsys dump' prints\n";

TEST_F(MistakenPages, AnEmptyFileIsCalledEmptyInOneLineWithoutARecovery) {
  for (const std::string command : {"analyze", "convert", "draw", "chart", "instruments", "suggest"}) {
    EXPECT_EQ(after(command, "empty1.mus"), "kivsys: empty1.mus: " + emptyWords) << command;
  }
  EXPECT_EQ(Json::parse(place.kivsys({"analyze", "--json", "empty1.mus"}).out)["next"], Json());
}

TEST_F(MistakenPages, ATextIsCalledATextInOneLineWithTheCommandForPageTexts) {
  for (const std::string file : {"letter1.mus", "umlaut1.mus"}) {
    for (const std::string command : {"analyze", "convert", "draw"}) {
      EXPECT_EQ(after(command, file), "kivsys: " + file + ": " + textWords) << command;
    }
  }
}

TEST_F(MistakenPages, ThatAreTextsOfPagesAreBuiltUnderAnotherName) {
  EXPECT_EQ(after("draw", "text1.txt"),
            "kivsys: text1.txt: this is the text of a page, not a page\nNext: kivsys build text1.txt text1.MUS\n");
  EXPECT_EQ(after("draw", "text1.mus"),
            "kivsys: text1.mus: this is the text of a page, not a page\n"
            "Next: kivsys build text1.mus BUILT-text1.MUS\n");
  EXPECT_EQ(place.kivsys({"build", "text1.mus", "BUILT-text1.MUS"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "BUILT-text1.MUS"}).status, 0);
}

TEST_F(MistakenPages, AreNotRecovered) {
  const Ended empty = place.kivsys({"recover", "empty1.mus"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.out, "empty1.mus: " + emptyWords);
  EXPECT_EQ(place.kivsys({"recover", "letter1.mus"}).out, "letter1.mus: " + textWords);
  EXPECT_EQ(place.kivsys({"recover", "text1.txt"}).error, "Next: kivsys build text1.txt text1.MUS\n");
}

TEST_F(MistakenPages, AreKnownFromAnyFolder) {
  fs::create_directory(place.path() / "out");
  for (const auto& [file, words] : {std::pair("empty1.mus", emptyWords), std::pair("letter1.mus", textWords)}) {
    const Ended ended = place.kivsys({"analyze", "--folder", "out", file});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "kivsys: " + std::string(file) + ": " + words);
    EXPECT_EQ(Json::parse(place.kivsys({"analyze", "--json", "--folder", "out", file}).out)["next"], Json());
  }
}

TEST_F(MistakenPages, AreNotWhatIsLeftOfADamagedPage) {
  place.write("damaged1.mus", page("bytes FF FF FF FF\n"));
  EXPECT_EQ(after("draw", "damaged1.mus"),
            "kivsys: damaged1.mus: item 1: Structural error in MUS file\nNext: kivsys recover damaged1.mus\n");
  place.write("cut1.mus", place.read("x1.mus").substr(0, 20));
  EXPECT_TRUE(after("draw", "cut1.mus").ends_with("\nNext: kivsys recover cut1.mus\n"));
}

}  // namespace
}  // namespace kiv::test
