// Corrections, busts and trade capture reports.
#include <gtest/gtest.h>

#include "feeds/fix/trade_mapper.h"
#include "tests/feeds/fix/fix_samples.h"

namespace {

struct Row {
  std::string Body;
  std::string Told;
};

void ExpectDay(MappedDay& day, std::initializer_list<Row> rows) {
  int line = 0;
  for (const Row& row : rows) EXPECT_EQ(day.MapBody(row.Body), row.Told) << "row " << ++line << ": " << row.Body;
}

TEST(TradeChangesTest, CorrectsInPlaceAndKeepsWhatIsNotRepeated) {
  MappedDay day;
  day.MapBody(Fill("37=A|17=1|11=x|58=first|1=client|453=1|448=house|452=1|"));
  ASSERT_EQ(day.MapBody("35=8|37=A|17=2|19=1|150=G|31=9.5|"), "Correction 1=A/2");
  EXPECT_EQ(+day.Trade().Price, 9.5);
  EXPECT_EQ(+day.Trade().Quantity, 2u);
  EXPECT_STREQ(day.Trade().ReferenceText, "first");
  EXPECT_STREQ(day.Trade().MemberID, "house");
  EXPECT_EQ(+day.Trade().VELDOrderID, 1u);
  EXPECT_EQ(+day.Trade().OrderID, 1u);
  // The next one names the correction, or the trade, and keeps what the one before has set.
  ASSERT_EQ(day.MapBody("35=8|37=A|17=3|19=2|20=2|150=2|32=7|58=third|"), "Correction 1=A/3");
  EXPECT_EQ(+day.Trade().Price, 9.5);
  EXPECT_EQ(+day.Trade().Quantity, 7u);
  ASSERT_EQ(day.MapBody("35=8|37=A|17=4|19=1|150=G|1=other|"), "Correction 1=A/4");
  EXPECT_EQ(+day.Trade().Price, 9.5);
  EXPECT_EQ(+day.Trade().Quantity, 7u);
  EXPECT_STREQ(day.Trade().ReferenceText, "third");
  EXPECT_STREQ(day.Trade().ClientID, "other");
  EXPECT_STREQ(day.Trade().MemberID, "house");
  EXPECT_EQ(day.MapBody("35=8|37=A|17=4|19=1|150=G|1=other|"), "Repeat");
  EXPECT_EQ(day.MapBody("35=8|37=A|17=5|19=1|150=G|31=x|"), "Refused: 31=x is not a number");
}

TEST(TradeChangesTest, KeepsChosenFieldsInCorrections) {
  MappingChoices choices;
  choices.ClientTag = 20005;
  choices.UserRole = 7;
  MappedDay day(choices);
  day.MapBody(Fill("37=A|17=1|20005=client|453=1|448=user|452=7|"));
  for (const char* id : {"2", "3"}) {
    day.MapBody("35=8|37=A|17=" + std::string(id) + "|19=1|150=G|31=9|");
    EXPECT_STREQ(day.Trade().ClientID, "client");
    EXPECT_STREQ(day.Trade().UserID, "user");
  }
}

TEST(TradeChangesTest, BustsInPlace) {
  MappedDay day;
  day.MapBody(Fill("37=A|17=1|151=8|"));
  ASSERT_EQ(day.MapBody("35=8|37=A|17=2|19=1|20=1|150=2|31=0|32=2|151=10|58=sorry|"), "Bust 1=A/2");
  EXPECT_EQ(+day.Trade().Quantity, 0u);
  EXPECT_EQ(+day.Trade().Price, 1313.5);
  EXPECT_EQ(+day.Trade().PendingQuantity, 10u);
  EXPECT_STREQ(day.Trade().ReferenceText, "bust 1");
  EXPECT_EQ(day.MapBody("35=8|37=A|17=2|19=1|20=1|150=2|31=0|32=2|151=10|58=sorry|"), "Repeat");
  // The bust of a correction names either.
  day.MapBody(Fill("37=B|17=1|"));
  day.MapBody("35=8|37=B|17=2|19=1|150=G|31=9.5|");
  ASSERT_EQ(day.MapBody("35=8|37=B|17=3|19=2|150=H|"), "Bust 2=B/3");
  EXPECT_EQ(+day.Trade().Price, 9.5);
  EXPECT_STREQ(day.Trade().ReferenceText, "bust 2");
}

TEST(TradeChangesTest, TellsChangesOfUnknownTrades) {
  MappedDay day;
  ExpectDay(day, {
                     {"35=8|37=A|17=2|19=1|150=H|", "Unknown: bust of 1, which never came"},
                     {"35=8|37=A|17=2|19=1|150=H|", "Repeat"},
                     {"35=8|37=A|17=9|19=2|150=H|", "Unknown: bust of 2, which never came"},
                     {"35=8|37=A|17=3|19=7|150=G|31=5|",
                      "Unknown: correction of 7, which never came, is not shown: 48 and 55 are missing"},
                     {Fill("37=A|17=4|19=8|150=G|"),
                      "Unknown 1=A/4: correction of 8, which never came, is shown as a new trade"},
                     {Fill("37=A|17=4|19=8|150=G|"), "Repeat"},
                     {Fill("37=A|17=8|"), "Repeat: 17=8 came behind its correction and is not shown"},
                     {"35=8|37=A|17=5|19=8|150=H|", "Bust 1=A/5"},
                     {"35=8|37=A|17=6|19=4|150=H|", "Bust 1=A/6"},
                     {"35=8|37=B|17=7|19=4|150=H|", "Unknown: bust of 4, which never came"},
                     {"35=8|17=7|19=4|150=H|", "Refused: 37 is missing"},
                 });
}

TEST(TradeChangesTest, TakesChangesThatReuseTheIdOfTheTrade) {
  MappedDay day;
  ExpectDay(day, {
                     {Fill("37=A|17=1|"), "Trade 1=A/1"},
                     {"35=8|37=A|17=1|19=1|150=G|31=5|", "Correction 1=A/1~2: 17=1 is shown as 1~2"},
                     {"35=8|37=A|17=1|19=1|150=G|31=5|", "Repeat"},
                     {"35=8|37=A|17=1|19=1|150=G|31=6|", "Correction 1=A/1~3: 17=1 is shown as 1~3"},
                     {"35=8|37=A|17=1|150=H|", "Bust 1=A/1~4: 17=1 is shown as 1~4"},
                     {"35=8|37=A|17=1|150=H|", "Repeat"},
                     {Fill("37=A|17=1|"), "Repeat"},
                 });
}

TEST(TradeChangesTest, TellsControlCharactersOfTheTradeInItsCorrection) {
  MappedDay day;
  ExpectDay(day, {
                     {Fill("37=A|17=1|58=a\x02|"), "Trade 1=A/1: 58=a? has control characters"},
                     {"35=8|37=A|17=2|19=1|150=G|31=5|", "Correction 1=A/2: 58=a? has control characters"},
                 });
}

// Readers join both ids without a separator.
TEST(TradeChangesTest, ShowsNoPairTwice) {
  const std::string tooLong(33, 'o'), shown = std::string(30, 'o') + "~4";
  MappedDay day;
  ExpectDay(day,
            {
                {Fill("37=1|17=23|"), "Trade 1=1/23"},
                {Fill("37=12|17=3|"), "Trade 2=12/3~2: 17=3 is shown as 3~2"},
                {Fill("37=12|17=3|"), "Repeat"},
                {Fill("37=1|17=23|"), "Repeat"},
                {Fill("37=12|17=4|"), "Trade 3=12/4"},
                {Fill("37=123|17=~2|"), "Trade 4=123/~2~4: 17=~2 is shown as ~2~4"},  // like 12/3~2
                {"35=8|37=12|17=3~2|19=4|150=G|31=5|", "Correction 3=12/3~2~5: 17=3~2 is shown as 3~2~5"},
                {Fill("37=1|17=24|"), "Trade 5=1/24~6: 17=24 is shown as 24~6"},  // like 12/4
                {"35=8|37=1|17=24|19=23|150=G|31=5|", "Correction 1=1/24~7: 17=24 is shown as 24~7"},
                {Fill("37=" + tooLong + "|17=7|"), "Trade 6=" + shown + "/7: 37=" + tooLong + " is shown as " + shown},
                {Fill("37=" + shown + "|17=7|"), "Trade 7=" + shown + "/7~9: 17=7 is shown as 7~9"},
            });
}

constexpr std::string_view kCapture =
    "35=AE|571=R1|1003=T1|487=0|856=0|150=F|48=GC201312|55=GC|32=3|31=1313.5|60=20131007-09:30:01|552=2|"
    "54=1|37=B7|11=c1|453=2|448=HOUSE|452=1|448=T7|452=12|1=buyer|58=for one|54=2|37=S9|453=1|452=1|1=seller|77=C|";

TEST(TradeChangesTest, MapsEachSideOfACaptureReport) {
  MappedDay day;
  ASSERT_EQ(day.MapBody(kCapture), "Trade 1=B7/T1-B 2=S9/T1-S");
  EXPECT_EQ(day.Trades[0].Side, 1);
  EXPECT_STREQ(day.Trades[0].ClientID, "buyer");
  EXPECT_STREQ(day.Trades[0].MemberID, "HOUSE");
  EXPECT_STREQ(day.Trades[0].UserID, "T7");
  EXPECT_STREQ(day.Trades[0].ReferenceText, "for one");
  EXPECT_EQ(day.Trades[0].OpenClose, 0);
  EXPECT_EQ(day.Trades[1].Side, 2);
  EXPECT_STREQ(day.Trades[1].ClientID, "seller");
  EXPECT_STREQ(day.Trades[1].MemberID, "");
  EXPECT_EQ(day.Trades[1].OpenClose, 2);
  EXPECT_STREQ(day.Trades[1].SecurityID, "GC201312");
  EXPECT_EQ(day.MapBody(kCapture), "Repeat");
  // A correction of one side by the report's id; a bust of all by the trade's, without sides.
  ASSERT_EQ(day.MapBody("35=AE|571=R2|572=R1|487=2|31=9|552=1|54=2|37=S9|"), "Correction 2=S9/R2");
  EXPECT_EQ(+day.Trade().Price, 9);
  EXPECT_STREQ(day.Trade().ClientID, "seller");
  ASSERT_EQ(day.MapBody("35=AE|571=R3|1003=T1|487=1|552=0|"), "Bust 1=B7/R3-B 2=S9/R3-S");
  EXPECT_EQ(+day.Trades[1].Quantity, 0u);
  EXPECT_EQ(+day.Trades[1].Price, 9);
}

TEST(TradeChangesTest, KnowsWhatACaptureReportIs) {
  const std::string rest = "55=X|32=3|31=5|552=1|54=1|37=O|";
  std::string sides;
  for (int i = 0; i < 17; ++i) sides += "54=1|";
  MappedDay day;
  ExpectDay(day, {
                     {"35=AE|571=1|856=1|" + rest, "NoTrade"},
                     {"35=AE|571=1|856=3|" + rest, "NoTrade"},
                     {"35=AE|571=1|939=1|" + rest, "NoTrade"},
                     {"35=AE|571=1|" + rest, "Trade 1=O/1"},
                     {"35=AE|571=2|17=E2|1003=T2|856=2|" + rest, "Trade 2=O/E2"},
                     {"35=AE|571=9|17=E2|1003=T2|" + rest, "Repeat"},
                     {"35=8|150=F|17=E2|54=1|37=O|55=X|32=3|31=5|", "Repeat"},
                     {"35=8|150=F|17=E3|54=1|37=O|55=X|32=3|31=5|", "Trade 3=O/E3"},
                     {"35=AE|571=3|17=E3|" + rest, "Repeat"},
                     {"35=8|150=H|17=E4|19=E2|37=O|54=1|", "Bust 2=O/E4"},
                     {"35=AE|571=4|487=1|572=2|" + rest, "Bust 2=O/4"},
                     {"35=AE|571=4|487=1|572=2|" + rest, "Repeat"},
                     {"35=AE|571=5|487=1|572=x|" + rest, "Unknown: bust of x, which never came"},
                     {"35=AE|571=6|487=2|572=y|" + rest,
                      "Unknown 4=O/6: correction of y, which never came, is shown as a new trade"},
                     {"35=AE|571=7|487=4|572=y|" + rest, "Bust 4=O/7"},
                     {"35=AE|" + rest, "Refused: 17, 571 and 1003 are missing"},
                     {"35=AE|571=8|55=X|32=3|31=5|", "Refused: 54 is missing"},
                     {"35=AE|571=12|552=2|54=1|37=P|55=X|32=3|31=5|", "Trade 5=P/12: 552 tells 2 sides, 1 came"},
                     {"35=AE|571=8|55=X|32=3|31=5|552=1|54=9|", "Refused: 54=9 is no side of a trade"},
                     {"35=AE|571=8|55=X|32=3|31=5|552=2|54=1|54=9|", "Refused 6=8/8-B: 54=9 is no side of a trade"},
                     {"35=AE|571=10|55=X|32=3|31=5|552=2|54=1|11=c|54=1|11=c|", "Trade 7=c/10-B 8=c/10-B2"},
                     {"35=AE|571=13|17=E3|55=X|32=3|31=5|552=1|54=2|37=O|", "Trade 9=O/E3~12: 17=E3 is shown as E3~12"},
                     {"35=AE|571=11|552=17|" + sides, "Refused: the report has more than 16 sides"},
                 });
}

// What a day shows depends on its messages alone.
TEST(TradeChangesTest, MapsADayTwiceToTheSameBytes) {
  std::vector<std::uint8_t> bytes[2];
  for (std::vector<std::uint8_t>& day : bytes) {
    MappedDay mapped;
    for (int i = 0; i < 3'000; ++i) {
      const std::string id = std::to_string(i % 2'500), before = std::to_string(i - 1);
      mapped.MapBody(Fill("37=O" + std::to_string(i % 70) + "|17=" + id + "|11=" + std::to_string(i % 90) + "|"));
      if (i % 7 == 0)
        mapped.MapBody("35=8|37=O" + std::to_string((i - 1) % 70) + "|17=c" + id + "|19=" + before + "|150=G|32=1|");
    }
    mapped.MapBody(kCapture);
    EXPECT_EQ(mapped.Trades.size(), 2u);
    day = mapped.Bytes;
  }
  EXPECT_GT(bytes[0].size(), 500'000u);
  EXPECT_TRUE(bytes[0] == bytes[1]);
}

}  // namespace
