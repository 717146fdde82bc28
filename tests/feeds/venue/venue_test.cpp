// The rules that a venue's session keeps, without sockets: what a client sends against what it gets.
#include <gtest/gtest.h>

#include <algorithm>

#include "demo_venue/venue_session.h"
#include "tests/feeds/venue/venue_files.h"
#include "tests/support/own_folder.h"

namespace {

constexpr VenueTime kNow = 1772355600000000;  // 20260301-09:00:00

std::string Readable(std::string text) {
  std::replace(text.begin(), text.end(), kFieldEnd, '|');
  return text;
}

// A client of literal messages: Say returns what the venue says to them.
class VenueRules : public OwnFolder {
 protected:
  void Begin(std::uint64_t trades, const std::string& faults = "") {
    Day.emplace(trades, DeskFile(Folder), BadLines);
    Faults = ParseFaults(faults, "faults", trades);
    Session.emplace(VenueSettings(), *Day, Faults);
    Session->OnConnected(kNow);
  }
  std::vector<std::string> Say(const char* type, std::uint64_t number, const VenueText& fields = {},
                               const char* client = "DESK", const char* version = "FIX.4.4") {
    VenueText text;
    text.Add(35, type).Add(49, client).Add(56, "VENUE").Add(34, number).Add(52, SendingTimeText(kNow)).Append(fields);
    Session->OnBytes(text.Message(version), kNow);
    return Heard();
  }
  std::vector<std::string> Play() {
    while (Session->SendNext(kNow)) {
    }
    return Heard();
  }
  std::vector<std::string> Heard() {
    VenueFrames frames;
    for (const VenueOutput& output : Session->Output()) frames.Append(output.Bytes);
    Session->Output().clear();
    std::vector<std::string> messages;
    for (std::string message; frames.Take(message);) messages.push_back(Readable(message));
    return messages;
  }
  static std::string Numbers(const std::vector<std::string>& messages) {
    std::string text;
    for (std::string message : messages) {
      std::replace(message.begin(), message.end(), '|', kFieldEnd);
      text.append(VenueField(message, 35)).append(VenueField(message, 34)).append(VenueField(message, 43));
      text.append(VenueField(message, 97).empty() ? "" : "R").append(" ");
    }
    return text;
  }

  std::ostringstream Errors;
  BadLineReport BadLines{Errors};
  std::optional<VenueDay> Day;
  std::vector<VenueFault> Faults;
  std::optional<VenueSession> Session;
};

TEST_F(VenueRules, SaysATradeInTheFieldsThatAreMapped) {
  Begin(5);
  ASSERT_EQ(Say("A", 1, VenueText().Add(98, 0).Add(108, 30)).size(), 1U);
  const std::vector<std::string> trades = Play();
  ASSERT_EQ(trades.size(), 6U);  // and the question whether all came
  EXPECT_EQ(trades[3],
            "8=FIX.4.4|9=370|35=8|49=VENUE|56=DESK|34=5|52=20260301-09:00:00.000|17=1000003|150=F|39=2|54=2|"
            "37=2000000000001|11=D2000000000001|453=3|448=10412|447=D|452=1|448=ANITA|447=D|452=12|"
            "448=400012345678001|447=D|452=38|1=C1001|40=2|77=O|55=OAK|48=OAK20260918|22=8|167=OPTSTK|541=20260918|"
            "201=1|202=102.5|231=100|207=GROVE|32=4|31=101.11|60=20260302-00:00:00|38=4|151=0|14=4|6=101.11|58=note|"
            "10=142|");
}

TEST_F(VenueRules, ResendsReportsAndFillsGaps) {
  Begin(4, "after 2 correct");
  Say("A", 1, VenueText().Add(98, 0).Add(108, 30));
  EXPECT_EQ(Numbers(Play()), "82 83 84 85 86 17 ");
  Say("2", 2, VenueText().Add(7, 1).Add(16, 0));
  EXPECT_EQ(Numbers(Play()), "41Y 82Y 83Y 84Y 85Y 86Y 47Y 18 ");
  Say("2", 3, VenueText().Add(7, 4).Add(16, 5));
  EXPECT_EQ(Numbers(Play()), "84Y 85Y 19 ");
}

TEST_F(VenueRules, GoesOnWithItsNumbersOnANewConnection) {
  Begin(3);
  Say("A", 1);
  Session->SendNext(kNow);
  Session->OnClosed();
  Session->OnConnected(kNow);
  EXPECT_EQ(Numbers(Say("A", 2)), "A3 ");
  EXPECT_EQ(Numbers(Play()), "84 85 16 ");
}

TEST_F(VenueRules, GivesTheDayAgainBehindAReset) {
  Begin(3);
  Say("A", 1);
  Session->SendNext(kNow);
  Session->OnClosed();
  Session->OnConnected(kNow);
  EXPECT_EQ(Numbers(Say("A", 1, VenueText().Add(141, "Y"))), "A1 ");
  EXPECT_EQ(Numbers(Play()), "82R 83 84 15 ");
}

TEST_F(VenueRules, AsksForWhatItMisses) {
  Begin(1);
  EXPECT_EQ(Numbers(Say("A", 1)), "A1 ");
  EXPECT_EQ(Numbers(Say("0", 5)), "22 ");
  EXPECT_EQ(Numbers(Say("0", 6)), "") << "once for each gap";
  Say("4", 2, VenueText().Add(43, "Y").Add(123, "Y").Add(36, 7));
  EXPECT_EQ(Numbers(Say("1", 7, VenueText().Add(112, "x"))), "03 ");
}

TEST_F(VenueRules, RefusesOthers) {
  struct Case {
    const char* Type;
    const char* Client;
    const char* Version;
    const char* Answer;
  };
  constexpr Case kCases[] = {
      {"A", "SOMEBODY", "FIX.4.4", "51 "}, {"A", "DESK", "FIX.4.3", ""}, {"0", "DESK", "FIX.4.4", ""}};
  for (const Case& given : kCases) {
    SCOPED_TRACE(std::string(given.Type) + given.Client + given.Version);
    Begin(1);
    EXPECT_EQ(Numbers(Say(given.Type, 1, {}, given.Client, given.Version)), given.Answer);
    EXPECT_TRUE(Session->WantsClose());
    EXPECT_FALSE(Session->IsLoggedOn());
  }
}

TEST_F(VenueRules, RefusesANumberThatIsTooLow) {
  Begin(1);
  Say("A", 1);
  Say("0", 2);
  EXPECT_EQ(Numbers(Say("0", 2)), "52 ");
  EXPECT_TRUE(Session->WantsClose());
}

TEST_F(VenueRules, EndsOnlyWhenTheClientHasAll) {
  Begin(1);
  Say("A", 1);
  Play();
  EXPECT_EQ(Numbers(Say("0", 2)), "");
  EXPECT_EQ(Numbers(Say("0", 3, VenueText().Add(112, "DAY COMPLETE"))), "54 ");
  Say("5", 4);
  Session->OnClosed();
  EXPECT_TRUE(Session->IsFinished());
}

TEST(VenueFaults, TellsTheLineOfAMistake) {
  struct Case {
    const char* Script;
    const char* Sentence;
  };
  constexpr Case kCases[] = {
      {"after 3 garbled", "f:1: there is no such fault; --help lists them"},
      {"# first\n\nafter 3", "f:3: a line is \"after N FAULT [NUMBER]\""},
      {"after 1 split 2\nafter 9 silence 3", "f:2: this fault takes no number"},
      {"after 9 split 2 2", "f:1: a line is \"after N FAULT [NUMBER]\""},
      {"after 9 split -2", "f:1: the fault's number is not a number above 0"},
      {"after 0 split", "f:1: behind \"after\" stands a count of trades, above 0 and below that of the day"},
      {"after 10 split", "f:1: behind \"after\" stands a count of trades, above 0 and below that of the day"},
  };
  for (const Case& given : kCases) {
    SCOPED_TRACE(given.Script);
    try {
      ParseFaults(given.Script, "f", 10);
      ADD_FAILURE() << "no mistake";
    } catch (const TerminalError& error) {
      EXPECT_STREQ(error.what(), given.Sentence);
    }
  }
}

TEST(VenueFaults, ComeInTheOrderOfTrades) {
  const std::vector<VenueFault> faults = ParseFaults("after 8 bust\nafter 2 wrong-number +7 # seven\n", "f", 10);
  ASSERT_EQ(faults.size(), 2U);
  EXPECT_EQ(faults[0].After, 2U);
  EXPECT_EQ(faults[0].Number, 7U);
  EXPECT_EQ(faults[1].After, 8U);
}

}  // namespace
