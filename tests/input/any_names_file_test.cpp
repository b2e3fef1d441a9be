// A names file may hold any bytes. Whatever they are, a load ends as the reference implementation of the rules says.

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "input/names_table.h"
#include "tests/input/names_host.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

/// What a load does, in one comparable piece. The names are those that count.
struct Outcome {
  Texts names;
  std::string firstPrefix;
  bool namesValid = false;
  Texts messages;
  bool isShown = false;
  bool isKept = true;

  bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << testing::PrintToString(outcome.names) << ", prefix " << testing::PrintToString(outcome.firstPrefix)
       << (outcome.namesValid ? ", valid" : "") << (outcome.isShown ? ", shown" : "")
       << (outcome.isKept ? ", kept" : ", deleted") << ", messages " << testing::PrintToString(outcome.messages);
}

const Texts pages = {"C:\\S\\A1.MUS", "C:\\S\\B2.MUS", "C:\\S\\", "\\"};

class DiskOfPages : public NamesHost {
 public:
  DiskOfPages() {
    for (const std::string& page : pages) {
      addFile(page, "");
    }
  }
};

Outcome loadOf(const std::string& bytes) {
  DiskOfPages host;
  host.addFile(NamesHost::namesFile, bytes);
  NamesTable names;
  LoadNamesTable(host, NamesHost::namesFile, names);
  Outcome outcome;
  for (int i = 1; i <= names.nameCount; ++i) {
    outcome.names.push_back(names.name(i));
  }
  outcome.firstPrefix = names.firstPrefix;
  outcome.namesValid = names.namesValid;
  for (const Message& message : host.messages) {
    EXPECT_EQ(message.icon, Icon::information);
    outcome.messages.push_back(message.text);
  }
  outcome.isShown = host.calls == Texts{"run Notepad C:\\KIV\\names.txt", "delete C:\\KIV\\names.txt"};
  EXPECT_TRUE(outcome.isShown || host.calls.empty());
  outcome.isKept = host.hasFile(NamesHost::namesFile);
  return outcome;
}

/// The reference: all lines first, then one after the other until one of them ends the load.
class ReferenceLoad {
 public:
  Outcome of(const std::string& bytes) {
    for (const std::string& line : linesOf(bytes)) {
      if (!add(line)) {
        outcome_.names.clear();
        return outcome_;
      }
    }
    outcome_.namesValid = !outcome_.names.empty();
    return outcome_;
  }

 private:
  static Texts linesOf(const std::string& bytes) {
    Texts lines(1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (bytes[i] == '\n' || bytes[i] == '\r') {
        i += bytes.compare(i, 2, "\r\n") == 0 ? 1U : 0U;
        lines.emplace_back();
      } else {
        lines.back() += bytes[i];
      }
    }
    return lines;  // what follows the last end is one more, empty line, which means nothing
  }

  bool add(std::string line) {
    while (!line.empty() && line.back() == ' ') {
      line.pop_back();
    }
    if (line.empty() || line.front() == ' ' || line.front() == '*') {
      return true;
    }
    const bool isRecord = line.size() >= 2 && line.substr(line.size() - 2) == " 1";
    std::string record = line;
    if (isRecord) {
      record = FakeHost().upperCase(line.substr(0, line.size() - 2));
      outcome_.names.push_back(record);
    } else {
      outcome_.messages.push_back("Filename [" + line +
                                  "] in Names file not terminated by ' 1'. Hit enter to continue.");
    }
    return outcome_.names.empty() || check(record, isRecord);
  }

  bool check(const std::string& record, bool isRecord) {
    const std::size_t backslash = record.find_last_of('\\');
    if (backslash == std::string::npos) {
      return refuse("Invalid record format in Names file.\r\nName must have a path prefix:\r\n" + record + "\r\n");
    }
    const std::string prefix = record.substr(0, backslash + 1);
    if (isRecord && outcome_.names.size() == 1) {
      outcome_.firstPrefix = prefix;
    }
    if (prefix != outcome_.firstPrefix) {
      return refuse(
          "Names in Names file do not all have the same path prefix.\r\nThis is a requirement for KivSystem.\r\n");
    }
    const std::string& name = outcome_.names.back();
    if (name.find("\\\\") == std::string::npos && std::find(pages.begin(), pages.end(), name) != pages.end()) {
      return true;
    }
    const std::string missing = " [" + name + "] refers to non-existing or unaccessable file\r\n";
    if (name.substr(0, 2) == "A:" || name.substr(0, 2) == "B:") {
      outcome_.messages.push_back("Name in names file" + missing + "Define a new names file by music file selection.");
      return false;
    }
    return refuse("Name in Names file" + missing);
  }

  bool refuse(const std::string& text) {
    outcome_.messages.push_back(text + "Names file will be deleted after view.");
    outcome_.isShown = true;
    outcome_.isKept = false;
    return false;
  }

  Outcome outcome_;
};

void expectReferenceOutcome(const std::string& bytes) {
  ASSERT_EQ(loadOf(bytes), ReferenceLoad().of(bytes)) << testing::PrintToString(bytes);
}

const std::string sample = "* two\r\nC:\\S\\A1.MUS 1\r\nc:\\s\\b2.mus 1\r\nC:\\S\\C3.MUS\r\n";

TEST(AnyNamesFile, TheSampleLoadsTwoNames) {
  EXPECT_EQ(loadOf(sample).names, (Texts{"C:\\S\\A1.MUS", "C:\\S\\B2.MUS"}));
  expectReferenceOutcome(sample);
}

TEST(AnyNamesFile, CutAnywhere) {
  for (std::size_t length = 0; length <= sample.size(); ++length) {
    expectReferenceOutcome(sample.substr(0, length));
  }
}

TEST(AnyNamesFile, AnyByteChangedToAnyOther) {
  for (std::size_t at = 0; at < sample.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string changed = sample;
      changed[at] = static_cast<char>(byte);
      expectReferenceOutcome(changed);
    }
  }
}

TEST(AnyNamesFile, AnyByteLeftOutOrDoubled) {
  for (std::size_t at = 0; at < sample.size(); ++at) {
    expectReferenceOutcome(std::string(sample).erase(at, 1));
    expectReferenceOutcome(std::string(sample).insert(at, 1, sample[at]));
  }
}

TEST(AnyNamesFile, RandomBytes) {
  std::mt19937 random(20'406);
  for (int round = 0; round < 3'000; ++round) {
    std::string bytes(random() % 200, ' ');
    for (char& byte : bytes) {
      byte = static_cast<char>(random() & 0xFFU);
    }
    expectReferenceOutcome(bytes);
  }
}

TEST(AnyNamesFile, RandomPiecesOfNamesFiles) {
  const Texts pieces = {"C:\\S\\A1.MUS", "c:\\s\\", "b2.mus", " 1", " ", "\r\n", "\n", "\r", "*", "A:", "\\",
                        "B:\\X",         "1"};
  std::mt19937 random(77);
  for (int round = 0; round < 6'000; ++round) {
    std::string bytes;
    for (auto count = random() % 24; count > 0; --count) {
      bytes += pieces[random() % pieces.size()];
    }
    expectReferenceOutcome(bytes);
  }
}

TEST(AnyNamesFile, RandomLines) {
  const Texts lines = {
      "C:\\S\\A1.MUS 1", "c:\\s\\b2.mus 1", "C:\\S\\NO.MUS", "* note", "", "C:\\T\\A1.MUS 1", "A:\\X 1", "X 1"};
  std::mt19937 random(1'994);
  for (int round = 0; round < 3'000; ++round) {
    std::string bytes;
    for (auto count = random() % 8; count > 0; --count) {
      // The lines at the front are those that a load survives; they come more often.
      bytes += lines[random() % 4 != 0 ? random() % 5 : random() % lines.size()] + "\r\n";
    }
    expectReferenceOutcome(bytes);
  }
}

}  // namespace
}  // namespace kiv::test
