// Writes the first inputs of the fuzz targets: make_fuzz_seeds FOLDER makes FOLDER/<target>/<name>.
#include <zlib.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "tests/trade_data/cache_player.h"
#include "tests/trade_data/sample_trade.h"
#include "tests/trade_data/wire_bytes.h"

namespace {

class SeedFolder {
 public:
  SeedFolder(const std::filesystem::path& corpus, const char* target) : Folder(corpus / target) {
    std::filesystem::create_directories(Folder);
  }
  void Add(const std::string& name, const std::string& bytes) {
    std::ofstream file(Folder / name, std::ios::binary);
    if (!(file << bytes).flush()) std::cerr << "cannot write " << Folder / name << '\n';
  }

 private:
  std::filesystem::path Folder;
};

std::string Trade(std::uint32_t id, const std::string& execution, const std::string& more = {}) {
  return WireMessage(8111,
                     WireU32(20008, id) + WireText(55101, execution) + WireTerminator() + WireU32(20014, id) + more);
}
std::string Amend(std::uint32_t id, std::uint32_t newQuantity, std::uint32_t addQuantity,
                  const std::string& more = {}) {
  return WireMessage(
      9112, WireU32(20008, id) + WireU32(20084, 2) + WireU32(20103, newQuantity) + WireU32(20104, addQuantity) + more);
}

std::string Zipped(const std::string& body, unsigned mode = 1) {
  uLongf size = compressBound(static_cast<uLong>(body.size()));
  std::string out(size, '\0');
  compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(body.data()),
           static_cast<uLong>(body.size()));
  out.resize(size);
  return WireU16(1, mode) + WireU16(10001, static_cast<unsigned>(size)) + out;
}

void MakeReaderSeeds(SeedFolder folder) {
  const std::string number = WireU16(10002, 8112);
  const std::string sample = SampleMessageBody();
  folder.Add("empty", "");
  folder.Add("header_alone", WireU16(1, 0) + WireU16(10001, 0));
  folder.Add("number_alone", WireMessage(8112, ""));
  folder.Add("number_cut", WireU16(1, 0) + WireU16(10001, 4) + number.substr(0, 4));
  folder.Add("number_missing", WireU16(1, 0) + WireU16(10001, 4) + WireU8(101, 1));
  folder.Add("incomplete", WireMessage(8112, WireU32(20008, 5)).substr(0, 18));
  folder.Add("garbage_before", "#\x01" + WireMessage(8112, "") + "behind");
  folder.Add("two_messages", WireMessage(8112, "") + WireMessage(30022, ""));
  folder.Add("length_at_most", WireU16(1, 0) + WireU16(10001, 65535) + number);
  folder.Add("unknown_mode", WireMessage(8112, "", 7));
  folder.Add("enciphered", WireMessage(8112, "", 2));
  folder.Add("mode_100", WireMessage(8112, "", 100));
  folder.Add("sample_trade", WireU16(1, 0) + WireU16(10001, static_cast<unsigned>(sample.size())) + sample);
  folder.Add("sample_trade_zipped", Zipped(sample));
  folder.Add("zipped_grows", Zipped(number + WireText(55010, std::string(9000, 'x'))));
  folder.Add("long_plain", WireMessage(8112, WireText(55010, std::string(3000, 'x'))));
  folder.Add("zipped_too_large", Zipped(number + std::string(70000, '\0')));
  folder.Add("zipped_broken", Zipped(sample).substr(0, 60) + Zipped(sample).substr(61) + "#");
  folder.Add("zipped_in_name_only", WireMessage(8112, "0123456789" + number + WireU32(20008, 5), 1));
  folder.Add("each_width", WireMessage(8112, WireHead(0) + WireU8(1, 1) + WireU16(10001, 1) + WireU32(20001, 1) +
                                                 WireDouble(30001, 1) + WireU32(35001, 1) + WireDouble(40001, 1) +
                                                 WireHead(45001) + std::string(16, 'x') + WireDouble(50001, 1) +
                                                 WireText(55001, "t") + WireHead(65001) + WireTerminator()));
  folder.Add("count_too_large", WireMessage(8112, WireU16(55001, 900) + "text"));
}

void MakeDecoderSeeds(SeedFolder folder) {
  const std::string end = WireTerminator();
  const std::string sample = SampleMessageBody();
  const std::string long40(40, 'x');
  folder.Add("empty", "");
  folder.Add("sample", sample);
  folder.Add("sample_cut_in_key", sample.substr(0, 40));
  folder.Add("sample_cut_in_body", sample.substr(0, 300));
  folder.Add("no_terminator", WireU32(20008, 5) + WireU8(101, 1));
  folder.Add("key_alone", WireU16(10002, 8111) + WireU32(20008, 5) + end);
  folder.Add("unknown_in_key", WireText(56000, WireU32(20008, 5)) + end + WireU8(101, 1));
  folder.Add("unknown_in_body", end + WireText(56000, WireU8(101, 9)) + WireU32(20001, 0x23000000) + WireU32(20011, 8));
  folder.Add("long_texts", WireText(55001, long40) + WireText(55100, long40) + end + WireText(55105, long40) +
                               WireText(55109, long40 + long40));
  std::string longest = end;
  for (const SampleField& field : kSampleFields)
    if (field.IsText()) longest += WireText(field.Tag, long40 + long40);
  folder.Add("every_text_too_long", longest);
  folder.Add("mark_in_cut_part", end + WireText(55102, std::string(20, 'c') + WireU8(101, 9)));
  folder.Add("short_over_long",
             end + WireText(55109, long40) + WireText(55109, "ab") + WireText(55010, std::string(3, 0)));
  folder.Add("dropped", end + WireU32(20007, 0x23232323) + end + WireU32(20084, 0));
  folder.Add("odd_doubles", end + WireDouble(40002, -0.0) + WireDouble(40004, 1e300) + WireHead(40008) +
                                "\xFF\xFF\xFF\xFF\xFF\xFF\xF7\xFF");
  folder.Add("count_too_large", end + WireU16(55102, 900) + WireU8(101, 2));
}

void MakeSequenceSeeds(SeedFolder folder) {
  const std::string end = WireMessage(8112, "");
  const std::string clear = WireMessage(30022, "");
  const std::string reopen = WireMessage(kReopenDownload, "");
  const std::string download = Trade(3, "c") + Trade(1, "a") + Trade(2, "b");
  const auto with = [](char books, const std::string& messages) { return std::string(1, books) + messages; };
  folder.Add("download", with(0, download));
  folder.Add("download_and_end", with(1, download + end + Trade(4, "d")));
  folder.Add("repeats", with(3, download + download + end + download + Trade(9, "a")));
  folder.Add("known_id", with(15, download + end + Trade(2, "b2", WireU8(101, 2)) + Trade(0x80000000u, "n")));
  folder.Add("clear", with(15, download + end + clear + download + end));
  folder.Add("amend_early", with(1, Amend(1, 5, 0) + Amend(1, 0, 5)));
  folder.Add("amend_product", with(3, download + end + Amend(1, 0, 0)));
  folder.Add("amend_quantity", with(7, download + end + Amend(2, 9, 0)));
  folder.Add("amend_unknown_no_book", with(0, end + Trade(1, "a") + Amend(7, 0, 70)));
  folder.Add("amend_unknown_filtered", with(2, end + Trade(1, "a") + Amend(7, 0, 70)));
  folder.Add("amend_unknown", with(15, end + Trade(1, "a") + Amend(7, 0, 70) + Amend(8, 0, 80, WireText(55100, "o"))));
  folder.Add("amend_keeps", with(1, end + Trade(1, "a") + Amend(7, 0, 70, WireText(55001, "user")) +
                                        Amend(8, 0, 80, WireText(55100, "o") + WireU8(101, 2))));
  folder.Add("amend_without_quantities", with(1, end + Trade(1, "a") + Amend(7, 9, 70, WireText(55100, "o")) +
                                                     WireMessage(9112, WireU32(20008, 8) + WireText(55100, "p")) +
                                                     WireMessage(9112, WireU32(20103, 6) + WireText(55100, "q"))));
  folder.Add("merge_displaces", with(9, end + Trade(5, "e") + Trade(9, "i") + reopen + Trade(7, "g") + end));
  folder.Add("merge_displaces_all", with(1, download + end + reopen + Trade(0, "z") + end + Trade(4, "d")));
  folder.Add("other_id", with(5, end + Trade(5, "e") + Amend(5, 6, 0) + reopen + Amend(8, 0, 80, WireText(55100, "o")) +
                                     end + Amend(8, 81, 0)));
  folder.Add("zipped", with(1, Zipped(SampleMessageBody()) + end + "garbage" + WireMessage(9101, "")));
}

void MakeSettingsSeeds(SeedFolder folder) {
  const auto root = [](const std::string& elements) { return "<Root>" + elements + "</Root>"; };
  folder.Add("empty", "");
  folder.Add("root_alone", "<Root>\r\n</Root>\r\n");
  folder.Add("root_with_value", "<Root>\"1\"</Root>behind");
  folder.Add("profile",
             "<ColumnProfile>\r\n<TradeBook>\r\n<colServer>\r\n<Header>\"Server\"</Header>\r\n<Width>\"60\"</Width>\r\n"
             "</colServer>\r\n<IsMultipleSort>\"1\"</IsMultipleSort>\r\n</TradeBook>\r\n</ColumnProfile>\r\n");
  folder.Add("line_in_value", root("<A>\"one\r\ntwo\r\"</A>"));
  folder.Add("quotes_in_value", root("<A>\"\"\"</A><B>\"</B><C>\"a \"b\" \xE4\"</C>"));
  folder.Add("same_name_within", root("<A><A><A>\"1\"</A></A><A></A></A>"));
  folder.Add("tags_in_value", root("<A>\"<A>x</A>\"</A><B>\"<Q \" </B>"));
  folder.Add("tag_lost_in_saving", "<B><A>\"<B></A></B><//B></B>");
  folder.Add("name_holds_tag", root("<A<B>\"1\"</A<B><></><//A>\"2\"<///A>"));
  folder.Add("blank_between", root(" <A>\"1\"</A> <B>\"2\"</B>"));
  folder.Add("closed_by_value", root("<A>\"</Root>\"</A>"));
  folder.Add("cut", root("<A>\"1\"</A>").substr(0, 16));
  folder.Add("many_opened", "<a><b><c><d><e><f><g><a><b><c><d><e><f><g>");
}

void MakeDescriptionSeeds(SeedFolder folder) {
  folder.Add("empty", "");
  folder.Add("one_name", "Price");
  folder.Add("columns", "Server\r\nExchangeTradeTime\r\nStrikePrice\r\nOptionType\r\nSymbol\r\nOpenClose");
  folder.Add("more_columns", "SecurityType\nTime\nMultiplier\ncolStrategyID\nReferenceText\nClientID\nExchangeTradeID");
  folder.Add("named_fields",
             "Security name\nBook Type\nMarket Type\nPro/Client\nBranch No\nTrade Status\nOpposite Broker Id\n"
             "Cover/Uncover Flag");
  folder.Add("last_is_empty_in_cash", "Side\nStrikePrice\n");
  folder.Add("titles", "Side,Buy/Sell\nExchangeTradeTime,Time,dd/MM/yyyy HH:mm:ss\nPrice,At,\n");
  folder.Add("empty_parts", ",Side\nSide,\n,,\nSide,,x\n,\nPrice");
  folder.Add("four_parts", "Side,a,b,c\r\nPrice,a,b");
  folder.Add("empty_lines", "\n\r\n\nSide\n\r\n\r\nPrice\r\n");
  folder.Add("returns", "Side\r\r\nPrice\rQuantity\n\r");
  folder.Add("unknown", "side\nSide \nBook type\nSide");
}

void MakeFilterSeeds(SeedFolder folder) {
  const auto seed = [](int column, const std::string& filter, const std::string& cell) {
    return static_cast<char>(column + 1) + filter + "\n" + cell;
  };
  folder.Add("empty", "");
  folder.Add("no_column", seed(-1, "x", "x"));
  folder.Add("server", seed(0, "FAU", "Default"));
  folder.Add("number", seed(2, "-1", "\xFF\xFF\xFF\xFF"));
  folder.Add("within_a_word", seed(12, "border or \t", "B der"));
  folder.Add("three_words", seed(12, "ab or cd OR ef", "EF"));
  folder.Add("umlauts", seed(12, "M\xDCl\xA0or\x85\xE4", "\xC4"));
  folder.Add("no_such_letter", seed(12, "\1 or a", "a"));
  folder.Add("side", seed(16, "buy or sell", "\2"));
  folder.Add("order_type", seed(17, "limit", "\x52"));
  folder.Add("price", seed(20, "1234.5", BytesOfValue(1234.5)));
  folder.Add("large_price", seed(20, "9999999999.7", BytesOfValue(9999999999.7)));
  folder.Add("negative_zero", seed(20, "-0", BytesOfValue(-0.0)));
  folder.Add("strike", seed(21, " <=100.9", BytesOfValue(99.5)));
  folder.Add("strike_mark", seed(21, "!100", BytesOfValue(-2147483648.5)));
  folder.Add("product", seed(28, "*", BytesOfValue(0)));
  folder.Add("not_shown", seed(34, "x", "ab"));
  folder.Add("time", seed(36, "10:15", "20240229-10:15:00"));
  folder.Add("count_of_columns", seed(37, "or", ""));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: make_fuzz_seeds FOLDER\n";
    return 2;
  }
  MakeReaderSeeds({arguments[1], "packet_reader_fuzz"});
  MakeDecoderSeeds({arguments[1], "trade_decoder_fuzz"});
  MakeSequenceSeeds({arguments[1], "message_sequence_fuzz"});
  MakeSettingsSeeds({arguments[1], "settings_text_fuzz"});
  MakeDescriptionSeeds({arguments[1], "description_files_fuzz"});
  MakeFilterSeeds({arguments[1], "filter_text_fuzz"});
  return 0;
}
