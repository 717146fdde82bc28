#include "tests/feeds/engine/engine_session.h"

namespace {

TEST(FixEngine, TakesWhatPublishedDictionariesRefuse) {
  constexpr std::string_view kReports[][2] = {
      {"8", "17=1|150=1|20=0|58=|9999=own|123456=x|"},
      {"8", "17=2|453=2|448=A|447=D|452=1|802=2|523=a|803=1|523=b|803=2|448=B|447=D|452=3|5001=x|"},
      {"8", "17=3|453=3|448=A|448=B|31=not a price|60=yesterday|1128=5|"},
      {"AE", "571=4|552=2|54=1|37=O1|453=2|448=A|452=1|448=B|452=3|136=1|137=2|54=2|37=O2|453=1|448=C|452=1|"},
      {"8", "17=5|555=2|600=L1|602=1|654=a|600=L2|602=2|654=b|454=2|455=a|456=1|455=b|456=2|768=1|769=x|"},
      {"U7", "17=6|"},
      {"8", "17=7|627=2|628=HUB|628=HUB2|"},
      {"8", "17=8|354=5|355=a|b=c|58=|"},
  };
  for (const std::string version : {"FIX.4.2", "FIX.4.4", "FIXT.1.1"}) {
    SCOPED_TRACE(version);
    FixPeer peer(version);
    Session session(peer, version);
    session.Start();
    const std::string logon = peer.LogOn(1);
    EXPECT_EQ(logon.find("\0011137=9\001") != logon.npos, version == "FIXT.1.1");
    Texts sent;
    for (const auto& [type, fields] : kReports)
      sent.push_back(peer.Send(type, static_cast<unsigned>(sent.size()) + 2, fields));
    ASSERT_TRUE(session.HasTarget(std::size(kReports) + 2));
    EXPECT_EQ(session.Venue.Kept, sent);
    EXPECT_EQ(session.Venue.Refused, Texts());
  }
}

TEST(FixEngine, KeepsEachMessageOnceAndInOrderThroughAGap) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  const std::string second = peer.Send("8", 2, "17=2|");
  const std::string fourth = peer.Send("8", 4, "17=4|58=as it came|");
  peer.Send("0", 5);
  EXPECT_NE(peer.Read("2").find("\0017=3\00116=0\001"), std::string::npos);
  const std::string third = peer.Send("8", 3, "43=Y|122=20260301-09:00:00|17=3|");
  peer.Send("8", 4, "43=Y|122=20260301-09:00:00|17=4|");
  const std::string sixth = peer.Send("8", 6, "17=6|");
  ASSERT_TRUE(session.HasTarget(7));
  EXPECT_EQ(session.Venue.Kept, (Texts{second, third, fourth, sixth}));
  EXPECT_TRUE(session.Venue.IsTold("gap: Messages from number 3 on are missing"));
}

TEST(FixEngine, KeepsAndTellsWhatIsRefused) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  const std::string twice = peer.Send("8", 2, "17=1|17=2|");
  EXPECT_NE(peer.Read("3").find("\00145=2\001"), std::string::npos);
  EXPECT_TRUE(session.Venue.IsTold("refused message: Message 2 (35=8) was refused: Tag appears more than once (17)."));
  const std::string badSum = peer.Make("8", 3, "17=3|58=garbled|", "VENUE");
  peer.SendRaw(badSum.substr(0, badSum.size() - 4) + "999\001");
  EXPECT_TRUE(session.Venue.IsTold("A garbled message was left out"));
  const std::string resent = peer.Send("8", 3, "17=3|");
  const std::string stranger = peer.Send("8", 4, "17=4|", "OTHER");
  EXPECT_TRUE(session.Venue.IsTold("wrong CompID: Message 4 (35=8) was refused: CompID problem"));
  ASSERT_TRUE(session.HasTarget(5));
  EXPECT_EQ(session.Venue.Kept, Texts{resent});
  EXPECT_EQ(session.Venue.Refused, (Texts{twice, badSum.substr(0, badSum.size() - 4) + "999\001", stranger}));
}

TEST(FixEngine, LosesNothingToMessagesThatAreAhead) {
  for (const char* type : {"5", "3"}) {
    SCOPED_TRACE(type);
    FixPeer peer;
    Session session(peer);
    session.Start();
    peer.LogOn(1);
    ASSERT_TRUE(session.HasTarget(2));
    peer.Send(type, 4, "45=1|");
    EXPECT_TRUE(session.Venue.IsTold("gap: Message 2 is missing"));
    EXPECT_EQ(session.Venue.NextTarget(), 2u);
  }
}

TEST(FixEngine, TellsJumpsOfTheNumbers) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  peer.Send("4", 2, "123=Y|36=10|");
  ASSERT_TRUE(session.HasTarget(10));
  peer.Send("4", 10, "36=1010|");
  ASSERT_TRUE(session.HasTarget(1010));
  EXPECT_TRUE(session.Venue.IsTold("number reset: The counterparty has gone on from number 10 to 1010: 1000 messages"));
  for (const auto& text : session.Venue.Told) EXPECT_EQ(text.find("from number 2 to 10"), text.npos);
  peer.Close();
  peer.LogOn(1, "141=Y|");
  ASSERT_TRUE(session.HasTarget(2));
  EXPECT_EQ(session.Venue.Resets, 1);
  peer.Close();
  peer.LogOn(1);
  EXPECT_TRUE(session.Venue.IsTold("number reset: VENUE at 127.0.0.1"));
}

TEST(FixEngine, ComesBackForWhatCouldNotBeKept) {
  FixPeer peer;
  Session session(peer);
  session.Venue.FailingKeeps = 1;
  session.Start();
  peer.LogOn(1);
  const std::string report = peer.Send("8", 2, "17=2|");
  while (!peer.Read().empty()) continue;
  EXPECT_EQ(session.Venue.NextTarget(), 2u);
  peer.LogOn(3);
  peer.Read("2");
  const std::string again = peer.Send("8", 2, "43=Y|122=20260301-09:00:00|17=2|");
  ASSERT_TRUE(session.HasTarget(4));
  EXPECT_EQ(session.Venue.Kept, Texts{again});
  EXPECT_TRUE(session.Venue.IsTold("disconnected: disconnected from VENUE at 127.0.0.1"));
  EXPECT_TRUE(session.Venue.IsTold("the message cannot be kept"));
}

TEST(FixEngine, OutlivesGarbage) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  peer.SendRaw("8=FIX.4.4\0019=-1\00135=8\00110=000\0018=FIX.4.4\0019=x\00110=000\0018=FIX.4.4\0019=\001");
  try {
    for (const char* fields :
         {"453=99999999|448=x|", "453=-1|448=x|", "354=99999999|355=x|", "354=-9|355=x|", "=|==|", "58"})
      peer.Send("8", 900, fields);
  } catch (const std::runtime_error&) {  // the engine may have closed the connection already
  }
  peer.Close();
  peer.LogOn(2);
  ASSERT_TRUE(session.HasTarget(3));
  // No counterparty can send it better: it takes its number.
  const std::string noTag = peer.Send("8", 3, "nonsense=1|");
  const std::string report = peer.Send("8", 4, "17=4|");
  EXPECT_TRUE(session.Venue.WaitFor([&] { return session.Venue.Kept == Texts{report}; }));
  EXPECT_EQ(session.Venue.Refused.back(), noTag);
}

// Its parser would read behind the end.
TEST(FixEngine, KeepsMessagesWhoseLengthsLieFromItsParser) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  for (const char* fields :
       {"354=2|355=x|", "354=99999999|355=x|", "354=-1|355=x|", "93=2|89=x|", "1397=2|1398=x|", "354=2|9=1|0355=x|",
        "0354=2|355=x|", "4294967650=2|355=x|", "354=2|4294967651=x|", "355=x|58=y|354=7|"}) {
    SCOPED_TRACE(fields);
    const std::string text = peer.Send("8", 2, fields);
    ASSERT_TRUE(session.Venue.WaitFor([&] { return !session.Venue.Refused.empty(); }));
    EXPECT_EQ(session.Venue.Refused, Texts{text});
    session.Venue.Refused.clear();
  }
  // The first has taken the number 2: nobody can send it better.
  const std::string report = peer.Send("8", 3, "17=2|354=1|355=x|");
  EXPECT_TRUE(session.Venue.WaitFor([&] { return session.Venue.Kept == Texts{report}; }));
}

TEST(FixEngine, DropsACounterpartyThatSendsWithoutAnEnd) {
  const std::string block(1 << 20, 'x');
  for (const std::string_view begin : {"8=FIX.4.4\0019=2000000000\001", "no begin"}) {
    FixPeer peer;
    Session session(peer);
    session.Start();
    peer.LogOn(1);
    ASSERT_TRUE(session.HasTarget(2));
    peer.SendRaw(begin);
    int blocks = 0;
    try {
      for (; blocks < 100; ++blocks) peer.SendRaw(block);
    } catch (const std::runtime_error&) {
    }
    EXPECT_LT(blocks, 40);
    EXPECT_TRUE(session.Venue.IsTold("it sends bytes without an end"));
  }
}

TEST(FixEngine, TellsThePasswordToNobodyButTheCounterparty) {
  FixPeer peer;
  Session session(peer);
  session.Settings.Username = "desk1";
  session.Settings.Password = "s3cret";
  session.Start();
  const std::string logon = peer.LogOn(1);
  EXPECT_NE(logon.find("\001553=desk1\001554=s3cret\001"), std::string::npos);
  peer.Send("3", 2, "45=1|58=bad password s3cret|");
  peer.Send("5", 3, "58=s3cret is wrong|");
  EXPECT_TRUE(session.Venue.IsTold("it logged out: ****** is wrong"));
  ASSERT_EQ(session.Venue.Kept.size(), 1u);
  EXPECT_NE(session.Venue.Kept[0].find("bad password ******\001"), std::string::npos);
  for (const auto& text : session.Venue.Told) EXPECT_EQ(text.find("s3cret"), text.npos);
}

TEST(FixEngine, StopsBesideASilentCounterparty) {
  FixPeer peer;
  Session session(peer);
  session.Start();
  peer.LogOn(1);
  EXPECT_TRUE(session.Venue.WaitFor([&] { return session.Venue.IsLoggedOn; }));
  session.Engine->Stop();
  peer.Read("5");
  EXPECT_FALSE(session.Venue.IsLoggedOn);
  for (const auto& text : session.Venue.Told) EXPECT_NE(text.compare(0, 13, "disconnected:"), 0) << text;
}

TEST(FixEngine, RefusesSettings) {
  FixPeer peer;
  Session session(peer);
  session.Settings.Dictionary = "/none";
  EXPECT_THROW(session.Start(), std::runtime_error);
  session.Settings.Dictionary.clear();
  session.Settings.StartTime = "noon";
  EXPECT_THROW(session.Start(), std::runtime_error);
}

}  // namespace
