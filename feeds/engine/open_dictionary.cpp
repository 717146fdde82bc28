#include "feeds/engine/open_dictionary.h"

#include <quickfix/Values.h>

#include <vector>

namespace {

// A group: the field with its count, the first field of each entry, and the other fields of an entry. A field that
// stands here as a group of its own is one within this. Union of FIX 4.2, 4.4 and 5.0 SP2: more members than a version
// has do no harm.
struct FixGroup {
  int Count;
  std::vector<int> Members;
};

const FixGroup kGroups[] = {
    {453, {448, 447, 452, 2376, 1675, 802}},  // parties
    {802, {523, 803}},                        // their identifications
    {539, {524, 525, 538, 804}},              // nested parties
    {804, {545, 805}},
    {756, {757, 758, 759, 806}},  // a second level of them
    {806, {760, 807}},
    {948, {949, 950, 951, 952}},  // a third
    {952, {953, 954}},
    {1116, {1117, 1118, 1119, 1120}},  // root parties
    {1120, {1121, 1122}},
    {1052, {1053, 1054}},  // parties of instruments
    {1018, {1019, 1050, 1051, 1052}},
    {454, {455, 456}},                                    // other ids of the security
    {457, {458, 459}},                                    // of the underlying
    {604, {605, 606}},                                    // of the leg
    {864, {865, 866, 1145, 867, 868, 1827, 2340}},        // events
    {136, {137, 138, 139, 891, 2215, 2216, 2217, 2640}},  // fees
    {382, {375, 337, 437, 438, 655}},                     // contra brokers
    {232, {233, 234}},                                    // stipulations
    {683, {688, 689}},                                    // of the leg
    {887, {888, 889}},                                    // of the underlying
    {78,                                                  // allocations
     {79, 661, 573, 366, 80,  467, 1047, 81,  153, 154, 119, 120,  736,  737,  742,  741, 539,  12,
      13, 479, 497, 576, 635, 780, 208,  209, 161, 360, 361, 1752, 1753, 1754, 1755, 989, 1002, 993}},
    {768, {769, 770, 771, 1033, 1034, 1035, 1727, 2839}},            // trade registration times
    {1907, {1903, 1904, 1905, 1906, 2411, 1908, 2389, 2397, 2412}},  // regulatory trade ids
    {518, {519, 520, 521}},                                          // contract amounts
    {576, {577}},                                                    // clearing instructions
    {33, {58, 354, 355}},                                            // lines of text
    {199, {104}},                                                    // IOI qualifiers
    {386, {336, 625, 1301, 1300}},                                   // trading sessions
    {215, {216, 217}},                                               // routing
    {534, {41, 535, 11, 37}},                                        // affected orders
    {73, {11, 37, 198, 526, 66, 38, 799, 800, 756, 67, 583}},        // orders
    {124, {32, 17, 31, 1003, 669, 29}},                              // executions
    {146,                                                            // related symbols
     {55,  65,  48,  22,  454, 460, 461, 167, 200, 541, 201, 202, 207,
      231, 106, 107, 711, 555, 140, 303, 336, 625, 54,  38,  15}},
    {267, {269}},  // market data entry types
    {268,          // market data
     {269, 279, 278, 280, 270, 15, 271, 272, 273, 274, 275, 336, 625, 276, 277, 282, 283, 284, 286, 59,
      432, 126, 110, 18,  287, 37, 288, 289, 346, 290, 58,  55,  48,  22,  167, 200, 201, 202, 207}},
    {295, {299, 55, 48, 22, 132, 133, 134, 135, 62, 60}},  // quotes
    {296, {302, 311, 304, 295}},                           // quote sets
    {862, {528, 529, 863}},                                // capacities
    {870, {871, 872}},                                     // attributes of instruments
    {957, {958, 959, 960}},                                // strategy parameters
    {1158, {1164, 1021, 1022}},
    {1483, {1484, 1485, 1486, 1487}},  // complex events
    {1491, {1492, 1493}},
    {1494, {1495, 1496}},
    {2668, {2669, 2670}},  // algorithm
    {2593, {2594, 2595}},  // attributes of orders
    {552,                  // sides of a trade
     {54,   1427, 1428, 1429, 1009, 1005, 1006, 1007, 1506, 83,   1008, 37,   198,  11,   526,  66,   453,  1,
      660,  581,  81,   575,  576,  635,  578,  579,  821,  15,   376,  377,  528,  529,  582,  40,   18,   483,
      336,  625,  943,  12,   13,   479,  497,  381,  157,  230,  158,  159,  738,  920,  921,  922,  238,  237,
      118,  119,  155,  156,  77,   58,   354,  355,  752,  518,  232,  136,  825,  826,  591,  70,   78,   1444,
      1115, 1154, 1155, 1016, 2839, 1851, 853,  1057, 1139, 1597, 1690, 1707, 1853, 1072, 1898, 1899, 1981, 2102,
      168,  126,  59,   432,  110,  1138, 1089, 41,   1080, 1081, 1431, 768,  1852, 1855}},
    {1016, {1012, 1013, 1014, 2839}},  // times of a side
    {555,                              // legs
     {600,  601, 602, 603,  604,  607,  608,  609,  764, 610,  611,  248,  249,  250,  251,  252,  253,
      257,  599, 596, 597,  598,  254,  612,  942,  613, 614,  615,  616,  617,  618,  619,  620,  621,
      622,  623, 624, 556,  740,  739,  955,  956,  999, 1212, 1224, 1420, 1421, 1422, 1358, 1017, 566,
      687,  690, 683, 564,  565,  539,  654,  587,  588, 637,  675,  1073, 1074, 1075, 1152, 1418, 1591,
      1594, 685, 990, 1379, 1381, 1383, 1384, 1689, 682, 686,  680,  681,  676,  677,  1366, 1342}},
    {711,  // underlyings
     {311,  312,  309,  305,  457,  462,  463,  310,  763,  313,  542,  315,  241,  242,  243,  244,
      245,  246,  256,  595,  592,  593,  594,  247,  316,  941,  317,  436,  435,  308,  306,  362,
      363,  307,  364,  365,  877,  878,  318,  879,  810,  882,  883,  884,  885,  886,  887,  972,
      975,  973,  974,  998,  1000, 1038, 1058, 1039, 1044, 1045, 1046, 1213, 1419, 1423, 1424, 1425,
      1441, 1453, 1454, 1455, 1456, 1459, 1460, 1526, 1527, 732,  733,  2083}},
    {627, {628, 629, 630}},  // hops, in the header
};

// Their values may hold the end of a field: the field before has the length.
constexpr int kDataFields[] = {89,  91,  96,  213, 349, 351,  353,  355,  357,  359,  361,  363,
                               365, 446, 619, 622, 735, 1185, 1280, 1282, 1398, 1400, 1402, 1578};

const FixGroup* FindGroup(int count) {
  for (const FixGroup& group : kGroups)
    if (group.Count == count) return &group;
  return nullptr;
}

// Without a version, QuickFIX checks neither message types, fields nor counts against a dictionary.
void Open(FIX::DataDictionary& dictionary) {
  dictionary.checkFieldsOutOfOrder(false);
  dictionary.checkFieldsHaveValues(false);
  dictionary.checkUserDefinedFields(false);
  dictionary.allowUnknownMsgFields(true);
}

// Adding a group twice to a message would leak the first.
void AddGroup(FIX::DataDictionary& to, const std::string& message, const FixGroup& group) {
  FIX::DataDictionary entry;
  Open(entry);
  for (const int member : group.Members) {
    entry.addField(member);
    if (const FixGroup* inner = FindGroup(member)) AddGroup(entry, message, *inner);
  }
  to.addGroup(message, group.Count, group.Members.front(), entry);
}

// Those of the application that may have groups.
constexpr const char* kMessageTypes[] = {
    "8",  "AE", "AR", "AD", "AQ", "9",  "D",  "E",  "F",  "G",  "H",  "Q",  "J",  "P", "AS", "AT", "AK", "AU",
    "T",  "AL", "AM", "AP", "AN", "AO", "AX", "AY", "AZ", "BA", "BN", "BZ", "CA", "r", "q",  "s",  "t",  "u",
    "AB", "AC", "S",  "R",  "Z",  "b",  "i",  "AI", "AJ", "V",  "W",  "X",  "Y",  "d", "f",  "h",  "y",  "AA",
    "B",  "C",  "L",  "K",  "N",  "6",  "7",  "e",  "c",  "g",  "v",  "w",  "x",  "z", "BO", "BP", "BK", "BL",
};

ptr::shared_ptr<FIX::DataDictionary> MakeOpenDictionary() {
  ptr::shared_ptr<FIX::DataDictionary> open(new FIX::DataDictionary);
  Open(*open);
  for (const FixGroup& group : kGroups)
    for (const char* type : kMessageTypes) AddGroup(*open, type, group);
  for (const int field : kDataFields) open->addFieldType(field, FIX::TYPE::Data);
  open->addHeaderField(627, false);
  AddGroup(*open, "_header_", *FindGroup(627));
  return open;
}

}  // namespace

FIX::DataDictionaryProvider MakeDictionaries(const std::string& beginString, const std::string& file) {
  ptr::shared_ptr<FIX::DataDictionary> session = MakeOpenDictionary();
  ptr::shared_ptr<FIX::DataDictionary> application = session;
  if (!file.empty()) {
    application.reset(new FIX::DataDictionary(file));
    Open(*application);
  }
  FIX::DataDictionaryProvider dictionaries;
  const bool isTransport = beginString == FIX::BeginString_FIXT11;
  dictionaries.addTransportDataDictionary(FIX::BeginString(beginString), isTransport ? session : application);
  // Of every version that a message may name (1128, 1137), whatever was agreed.
  for (char version = '0'; version <= '9'; ++version)
    dictionaries.addApplicationDataDictionary(FIX::ApplVerID(std::string(1, version)), application);
  return dictionaries;
}
