#include "repair/layout_file.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Instruments = std::vector<ListedInstrument>;

Instruments read(std::string_view text) {
  const auto layout = readLayoutFile(text);
  const auto* error = std::get_if<LayoutFileError>(&layout);
  EXPECT_EQ(error, nullptr) << error->line << ": " << error->reason;
  return error == nullptr ? std::get<Instruments>(layout) : Instruments();
}

LayoutFileError errorOf(std::string_view text) {
  const auto layout = readLayoutFile(text);
  const auto* error = std::get_if<LayoutFileError>(&layout);
  EXPECT_NE(error, nullptr) << text;
  return error == nullptr ? LayoutFileError{} : *error;
}

TEST(LayoutFile, ListsInstrumentsInTheOrderOfTheTable) {
  EXPECT_EQ(read("order,id,name,abbreviation,systems\n1,112,Flute,Fl.,\"1, 2\"\n2,104,,Ob.,1 to 3\n"),
            (Instruments{{112, "Flute", "Fl.", 2}, {104, "", "Ob.", 3}}));
}

TEST(LayoutFile, TakesWhatSpreadsheetsWrite) {
  EXPECT_EQ(read("\xEF\xBB\xBFID;Name\r\n101;\"Flute; solo\"\r\n\r\n102; Oboe \r\n"),
            (Instruments{{101, "Flute; solo", "", 2}, {102, "Oboe", "", 4}}));
}

TEST(LayoutFile, TakesQuotesLineEndsAndGuardsInCells) {
  EXPECT_EQ(read("id,name\r101,\"a \"\"big\"\"\rdrum\"\r102,'=x\r103,'tis\r"),
            (Instruments{{101, "a \"big\"\rdrum", "", 2}, {102, "=x", "", 4}, {103, "'tis", "", 5}}));
}

TEST(LayoutFile, TakesTheCellsOfWhatStavesLookLike) {
  EXPECT_EQ(read("id,clefs,keys,lines,size\n7,\"treble, bass\",2b,5,0.75\n"),
            (Instruments{{7, "", "", 2, "treble, bass", "5", "0.75", "2b"}}));
}

TEST(LayoutFile, SkipsTheStavesWithoutAnId) {
  EXPECT_EQ(read("id\n0\n5\n"), (Instruments{{5, "", "", 3}}));
}

TEST(LayoutFile, NamesTheLineThatIsWrong) {
  EXPECT_EQ(errorOf("id,name\n101,\"two\nlines\"\nx,Oboe\n"), (LayoutFileError{4, "\"x\" is no instrument id"}));
  EXPECT_EQ(errorOf("id\tname\n7\tFlute\n"), (LayoutFileError{1,
                                                              "tabs separate the cells of the table; store it as "
                                                              "comma-separated values in UTF-8"}));
  EXPECT_EQ(errorOf("id\n7\n\n7\n"), (LayoutFileError{4, "the id 7 is listed twice"}));
  EXPECT_EQ(errorOf("id,name,ID\n7,Flute,8\n"), (LayoutFileError{1, "two columns are named id"}));
  EXPECT_EQ(errorOf("name,id,Name \nFlute,7,Oboe\n"), (LayoutFileError{1, "two columns are named name"}));
  EXPECT_EQ(errorOf("id\n1.5\n"), (LayoutFileError{2, "\"1.5\" is no instrument id"}));
  EXPECT_EQ(errorOf("id\n-1\n"), (LayoutFileError{2, "\"-1\" is no instrument id"}));
  EXPECT_EQ(errorOf("id\n32768\n"), (LayoutFileError{2, "\"32768\" is no instrument id"}));
  EXPECT_EQ(errorOf("id,name\n1,\"open\n"), (LayoutFileError{2, "a quote is not closed"}));
  EXPECT_EQ(errorOf("id,name\n1,\"a\"b\n"), (LayoutFileError{2, "text follows a closing quote"}));
}

TEST(LayoutFile, IsATableOfInstruments) {
  EXPECT_EQ(errorOf(""), (LayoutFileError{1, "the table is empty"}));
  EXPECT_EQ(errorOf("name\nFlute\n"), (LayoutFileError{1, "no column is named id"}));
  EXPECT_EQ(errorOf("id,name\n0,none\n"), (LayoutFileError{1, "the table lists no instrument"}));
}

TEST(LayoutFile, IsBounded) {
  EXPECT_EQ(errorOf(std::string(longestLayoutFile + 1, ' ')).line, 1U);
  EXPECT_EQ(errorOf("id\n1" + std::string(300, ',') + "\n"), (LayoutFileError{2, "the line has more than 200 cells"}));
  std::string many = "id\n";
  for (std::size_t id = 1; id <= mostListed + 1; ++id) {
    many += std::to_string(id) + "\n";
  }
  EXPECT_EQ(errorOf(many), (LayoutFileError{mostListed + 2, "there are more than 1000 instruments"}));
}

}  // namespace
}  // namespace kiv::test
