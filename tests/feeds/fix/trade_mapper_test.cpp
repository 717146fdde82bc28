#include <gtest/gtest.h>

#include "feeds/fix/trade_mapper.h"
#include "tests/feeds/fix/fix_samples.h"
#include "tests/support/wire_bytes.h"

namespace {

constexpr std::string_view kFutureFill =
    "35=8|49=DEALER|56=DESK|34=2|52=20131007-09:30:01|37=11000000000004|11=C1|17=700003|20=0|150=2|39=2|1=CLIENT07|"
    "55=GC|48=GC201312|207=COMEX|30=XCEC|167=FUT|200=201312|231=100|54=1|40=2|32=2|31=1313.25|151=5|14=2|6=1313.25|"
    "60=20131007-09:30:01.123|77=O|58=first of two|";
constexpr std::string_view kOptionFill =
    "35=8|34=2|37=O-7|11=C2|17=E-9|150=F|39=1|453=3|448=HOUSE|447=D|452=1|448=TRADER7|447=D|452=12|448=400123|447=D|"
    "452=38|1=A1|55=ABCD|167=OPT|541=20240229|200=202402|201=1|202=2450.5|30=XNSE|54=5|40=1|32=150.00|31=101.75|"
    "151=0.0|60=20240105-10:15:02|77=C|95=9|96=58=a|58=b|58=to the desk|";

// A plus sign makes a copy of a number, as records are packed.
TEST(TradeMapperTest, MapsEachFieldOfAnExecutionReport) {
  MappedDay day;
  ASSERT_EQ(day.Map(FixMessage(kFutureFill, "FIX.4.2")), "Trade 1=11000000000004/700003");
  const DecodedTrade future = day.Trade();
  EXPECT_EQ(+future.VELDOrderID, 1u);
  EXPECT_EQ(+future.OrderID, 1u);
  EXPECT_STREQ(future.UserID, "");
  EXPECT_STREQ(future.Exchange, "COMEX");
  EXPECT_STREQ(future.SecurityID, "GC201312");
  EXPECT_STREQ(future.SecurityType, "FUT");
  EXPECT_STREQ(future.Symbol, "GC");
  EXPECT_STREQ(future.ExpiryDate, "201312");
  EXPECT_STREQ(future.OptionType, "XX");
  EXPECT_EQ(+future.StrikePrice, 0);
  EXPECT_EQ(+future.Multiplier, 100);
  EXPECT_STREQ(future.ExchangeTradeTime, "20131007-09:30:01.123");
  EXPECT_EQ(future.Side, 1);
  EXPECT_EQ(future.OrderType, 2);
  EXPECT_EQ(+future.Quantity, 2u);
  EXPECT_EQ(+future.PendingQuantity, 5u);
  EXPECT_EQ(+future.Price, 1313.25);
  EXPECT_STREQ(future.ClientID, "CLIENT07");
  EXPECT_STREQ(future.ReferenceText, "first of two");
  EXPECT_EQ(future.OpenClose, 1);

  ASSERT_EQ(day.Map(FixMessage(kOptionFill)), "Trade 2=O-7/E-9");
  const DecodedTrade option = day.Trade();
  EXPECT_EQ(+option.VELDOrderID, 2u);
  EXPECT_EQ(+option.OrderID, 2u);
  EXPECT_STREQ(option.UserID, "TRADER7");
  EXPECT_STREQ(option.MemberID, "HOUSE");
  EXPECT_STREQ(option.CTCLID, "400123");
  EXPECT_STREQ(option.Exchange, "XNSE");
  EXPECT_STREQ(option.SecurityID, "ABCD");
  EXPECT_STREQ(option.ExpiryDate, "20240229");
  EXPECT_STREQ(option.OptionType, "CE");
  EXPECT_EQ(+option.StrikePrice, 2450.5);
  EXPECT_EQ(+option.Multiplier, 1);
  EXPECT_EQ(option.Side, 2);
  EXPECT_EQ(option.OrderType, 1);
  EXPECT_EQ(+option.Quantity, 150u);
  EXPECT_EQ(option.OpenClose, 2);
  EXPECT_STREQ(option.ReferenceText, "to the desk");
}

// The bytes themselves, so that writer and reader cannot be wrong together.
TEST(TradeMapperTest, WritesAPlainMessage9101) {
  MappedDay day;
  day.MapBody(Fill("37=O1|17=E1|58=hello|"));
  const std::string expected =
      WireMessage(9101, WireText(55001, "") + WireU32(20008, 1) + WireU32(20009, 1) + WireText(55101, "E1") +
                            WireText(55100, "O1") + WireTerminator() + WireText(55010, "") + WireText(55104, "GC") +
                            WireText(55105, "") + WireText(55103, "GC") + WireText(55143, "") + WireText(55106, "XX") +
                            WireDouble(40004, 0) + WireDouble(40008, 1) + WireText(55118, "20131007-09:30:01") +
                            WireU32(20011, 0) + WireU8(101, 1) + WireU8(102, 0) + WireU32(20014, 2) +
                            WireU32(20013, 0) + WireDouble(40002, 1313.5) + WireText(55102, "") + WireText(55131, "") +
                            WireText(55012, "") + WireText(55109, "hello") + WireU8(115, 0));
  EXPECT_EQ(std::string(day.Bytes.begin(), day.Bytes.end()), expected);
}

TEST(TradeMapperTest, KnowsWhatIsATrade) {
  const std::pair<const char*, const char*> rows[] = {
      {"35=0|", "NoTrade"},
      {"35=A|95=3|96=a|b|", "NoTrade"},
      {"35=8|37=O|17=1|150=0|39=0|54=1|55=X|32=0|31=0|", "NoTrade"},
      {"35=8|37=O|17=1|150=1|54=1|55=X|32=0.00|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|150=2|54=1|55=X|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|150=4|54=1|55=X|32=3|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|20=3|150=2|54=1|55=X|32=3|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|150=I|54=1|55=X|32=3|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|54=1|55=X|31=5|", "NoTrade"},
      {"35=8|37=O|17=1|54=1|55=X|32=3|31=5|", "Refused: 150 is missing"},
      {"35=8|37=O|17=1|20=4|150=F|54=1|55=X|32=3|31=5|", "Refused: 20=4 is not known"},
      {"35=8|37=O|17=1|150=1|54=1|55=X|32=0.5|31=5|", "Refused: 32=0.5 is a fraction"},
      {"35=8|37=O|17=1|150=F|54=1|55=X|31=5|", "Refused: 32 is missing"},
      {"35=8|37=O|17=1|150=F|54=1|55=X|32=0|31=5|", "Refused: 32 is 0"},
      {"35=8|37=O|17=1|150=F|54=1|55=X|32=4294967296|31=5|", "Refused: 32=4294967296 is above 4294967295"},
      {"35=8|37=O|17=1|150=F|54=1|55=X|32=3|", "Refused: 31 is missing"},
      {"35=8|37=O|17=1|150=F|54=1|55=X|32=3|31=1e5|", "Refused: 31=1e5 is not a number"},
      {"35=8|37=O|17=1|150=F|55=X|32=3|31=5|", "Refused: 54 is missing"},
      {"35=8|37=O|17=1|150=F|54=4|55=X|32=3|31=5|", "Refused: 54=4 is no side of a trade"},
      {"35=8|37=O|17=1|150=F|54=11|55=X|32=3|31=5|", "Refused: 54=11 is no side of a trade"},
      {"35=8|37=O|17=1|150=F|54=1|32=3|31=5|", "Refused: 48 and 55 are missing"},
      {"35=8|37=|17=1|150=F|54=1|55=X|32=3|31=5|", "Refused: 37 is missing"},
      {"35=8|37=O|150=F|54=1|55=X|32=3|31=5|", "Refused: 17 is missing"},
      {"35=8|37=O|17=1|150=1|54=6|48=X|32=3|31=-5|", "Trade 1=O/1"},
      {"35=8|37=O|17=2|20=0|150=2|54=3|55=X|32=3|31=5|", "Trade 2=O/2"},
      {"35=8|37=O|17=3|150=F|54=2|55=X|32=3|31=5|", "Trade 3=O/3"},
  };
  MappedDay day;
  for (const auto& [body, told] : rows) {
    SCOPED_TRACE(body);
    EXPECT_EQ(day.MapBody(body), told);
  }
  EXPECT_EQ(day.Map(WithSoh("8=FIX.4.2|9=5|34=1|35=8|10=000|")), "Refused: the text does not begin with 8, 9 and 35");
  EXPECT_EQ(day.Map(WithSoh("8=FIX.4.2|9=5|35=8|x=1|10=000|")), "Refused: the text is garbled at byte 19");
  EXPECT_EQ(day.MapBody(Fill("37=O|17=" + std::string(1001, '1') + "|")).substr(0, 20), "Refused: 17=11111111");
}

TEST(TradeMapperTest, TellsWhatDoesNotFit) {
  const std::string text(70, 't');
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"58=" + text, "58=" + text.substr(0, 64) + "... is cut to 64 characters", ""},
      {"1=a\nb", "ClientID=a?b has control characters", "a?b"},
      {"1=a\x7F", "ClientID=a? has control characters", "a?"},
      {"1=\xE9\x80", "", "\xE9\x80"},
      {"453=1|448=ABCDEFGHIJKLMNOPQRSTUVW|452=1", "MemberID=ABCDEFGHIJKLMNOPQRSTUVW is cut to 20 characters", ""},
      {"151=1.5", "151=1.5 is a fraction", ""},
      {"202=x", "202=x is not a number", ""},
      {"231=1e3", "231=1e3 is not a number", ""},
      {"31=0.12345678901234567", "31=0.12345678901234567 has more digits than are kept", ""},
      {"60=20131007-09:30:01.123456789", "", ""},
      {"60=09:30", "60=09:30 is no time", ""},
      {"40=P|77=X|201=7", "", ""},
      {"207=A|207=B", "207 is there twice, the first is taken", ""},
      {"207=A|207=A", "", ""},
  };
  MappedDay day;
  int id = 0;
  for (const auto& [own, reason, client] : rows) {
    SCOPED_TRACE(own);
    day.MapBody(Fill("37=O|17=" + std::to_string(++id) + "|" + own + "|"));
    EXPECT_EQ(day.Last.Outcome, ReportOutcome::Trade);
    EXPECT_EQ(day.Last.Reason, reason);
    EXPECT_STREQ(day.Trade().ClientID, client.c_str());
    EXPECT_EQ(+day.Trade().Multiplier, 1);
    EXPECT_EQ(day.Trade().ReferenceText, own.starts_with("58=") ? text.substr(0, 64) : "");
    if (own == "60=09:30") {
      EXPECT_EQ(day.Trade().ExchangeTradeTime, std::string("09:30"));
    } else {
      EXPECT_EQ(day.Trade().ExchangeTradeTime,
                std::string(own.starts_with("60=") ? "20131007-09:30:01.1234" : "20131007-09:30:01"));
    }
  }
}

TEST(TradeMapperTest, TakesFieldsByTheChoicesOfTheVenue) {
  MappingChoices choices;
  choices.Exchange = "HOME";
  choices.UserID = "desk";
  choices.Multiplier = 50;
  choices.ClientTag = 109;
  choices.CtclTag = 20005;
  choices.MemberRole = 4;
  MappedDay day(choices);
  day.MapBody(Fill("37=O|17=1|1=no|109=yes|20005=ctcl|453=2|448=a|452=4|448=b|452=1|"));
  EXPECT_STREQ(day.Trade().Exchange, "HOME");
  EXPECT_STREQ(day.Trade().UserID, "desk");
  EXPECT_EQ(+day.Trade().Multiplier, 50);
  EXPECT_STREQ(day.Trade().ClientID, "yes");
  EXPECT_STREQ(day.Trade().CTCLID, "ctcl");
  EXPECT_STREQ(day.Trade().MemberID, "a");
  day.MapBody(Fill("37=O|17=2|231=2|30=X|453=2|448=enters|452=36|448=held|452=38|"));
  EXPECT_STREQ(day.Trade().Exchange, "X");
  EXPECT_STREQ(day.Trade().UserID, "enters");
  EXPECT_EQ(+day.Trade().Multiplier, 2);
  EXPECT_STREQ(day.Trade().CTCLID, "");

  choices.UserTag = choices.ClientTag = 58;  // one field for two, and for the text as well
  MappedDay other(choices);
  other.MapBody(Fill("37=O|17=1|58=both|453=1|448=enters|452=36|"));
  EXPECT_STREQ(other.Trade().UserID, "both");
  EXPECT_STREQ(other.Trade().ClientID, "both");
  EXPECT_STREQ(other.Trade().ReferenceText, "both");

  choices.ClientTag = 96;
  MappedDay data(choices);
  EXPECT_EQ(data.MapBody(Fill("37=O|17=1|95=3|96=a|b|")), "Trade 1=O/1: ClientID=a?b has control characters");
}

TEST(TradeMapperTest, NumbersOrdersAndKnowsRepeats) {
  MappedDay day;
  EXPECT_EQ(day.MapBody(Fill("37=A|17=1|11=x|")), "Trade 1=A/1");
  EXPECT_EQ(day.MapBody(Fill("37=B|17=1|11=y|")), "Trade 2=B/1");
  EXPECT_EQ(day.MapBody(Fill("37=A|17=2|11=y|")), "Trade 3=A/2");
  EXPECT_EQ(+day.Trade().VELDOrderID, 1u);
  EXPECT_EQ(+day.Trade().OrderID, 2u);
  EXPECT_EQ(day.MapBody(Fill("43=Y|37=B|17=1|11=y|")), "Repeat");  // comes again after a reset
  EXPECT_EQ(day.MapBody(Fill("37=A|17=3|32=x|")), "Refused: 32=x is not a number");
  EXPECT_EQ(day.MapBody(Fill("37=A|17=3|")), "Trade 4=A/3");
}

TEST(TradeMapperTest, RefusesATextCutAnywhere) {
  const std::string text = FixMessage(kOptionFill);
  for (std::size_t size = 0; size < text.size(); ++size) {
    const ExactBytes bytes(std::string_view(text).substr(0, size));
    std::vector<std::uint8_t> messages;
    TradeMapper mapper({}, [](std::uint64_t) { return std::string(); });
    const MappedReport report = mapper.Map({reinterpret_cast<const char*>(bytes.Data()), bytes.Size()}, 0, messages);
    ASSERT_EQ(report.Outcome, ReportOutcome::Refused) << size;
    ASSERT_FALSE(report.Reason.empty());
    ASSERT_TRUE(messages.empty());
  }
}

}  // namespace
