#include "host_link/module/message_router.h"

#include <gtest/gtest.h>

#include "tests/host_link/reply_for_test.h"
#include "tests/support/fake_terminal.h"

namespace {

constexpr EntryAddresses kAddresses = {0x1112131415161718, 0x2122232425262728, 0x3132333435363738, 0x4142434445464748};

const Bytes kIdentity =
    Hex("23 0100 0000 23 1127 7900"
        "23 1227 3475"
        "23 254E 01000000"
        "23 264E E9030000"
        "23 ECD6 0A00 'Trade Book'"
        "23 E9D6 2C00 'Copyright (c) 2026 The Trade Book developers'"
        "23 48D7 0F00 'VELD Trade DLL.'"
        "23 D413 00"
        "23 A04E 00000000"
        "23 A14E 07000000");

const Bytes kMenuEntry = Hex("23 0100 0000 23 1127 3801"
                             "23 1227 3575"
                             "23 98D7 8000 'T' 00 'r' 00 'a' 00 'd' 00 'e' 00 's' 00") +
                         Bytes(116) +
                         Hex("23 3175 3837363534333231"
                             "23 9F4E 00000000"
                             "23 39D8 8000 'T' 00 'r' 00 'a' 00 'd' 00 'e' 00 ' ' 00 'B' 00 'o' 00 'o' 00 'k' 00") +
                         Bytes(108) +
                         Hex("23 A513 00"
                             "23 C813 00"
                             "23 C913 00"
                             "23 CA13 00"
                             "23 7E00 77"
                             "23 FFFF");

const Bytes kTradeRoutes =
    Hex("23 0100 0000 23 1127 3400"
        "23 1227 3675"
        "23 3175 1817161514131211"
        "23 722B 8D23  23 722B AF1F  23 722B B01F  23 722B 9823"
        "23 FFFF"
        "23 702B AE1F  23 712B B01F"
        "23 FFFF");

const Bytes kPluginRoutes =
    Hex("23 0100 0000 23 1127 2700"
        "23 1227 3775"
        "23 3175 2827262524232221"
        "23 722B 4975  23 722B 4675  23 722B 4475  23 722B 4575"
        "23 FFFF");

TEST(PluginInfoTest, DescribesTheModuleInFourMessages) {
  ReplyForTest reply(0, true);
  AppendPluginInfo(reply.Buffer, false, kAddresses);
  EXPECT_EQ(reply.Content(), kIdentity + kMenuEntry + kTradeRoutes + kPluginRoutes);
  for (const Bytes& message : {kIdentity, kMenuEntry, kTradeRoutes, kPluginRoutes}) ExpectFieldsOfTable(message);
}

TEST(PluginInfoTest, IdentityAloneIsOneMessage) {
  ReplyForTest reply(0, true);
  AppendPluginInfo(reply.Buffer, true, kAddresses);
  EXPECT_EQ(reply.Content(), kIdentity);
}

TEST(PluginInfoTest, LeavesOutMessagesThatDoNotFit) {
  ReplyForTest reply(300, false);
  AppendPluginInfo(reply.Buffer, false, kAddresses);
  EXPECT_EQ(reply.Content(), kIdentity + kTradeRoutes + kPluginRoutes);
}

}  // namespace
