#include "terminal/report/html_table.h"

#include "terminal/chart/svg_chart.h"

namespace {

const char* ClassOf(HtmlTable::Kind kind, const std::string& text) {
  if (kind == HtmlTable::Kind::Words) return "";
  if (kind == HtmlTable::Kind::Result && text.starts_with('-')) return " class=\"n loss\"";
  if (kind == HtmlTable::Kind::Result && text.starts_with('+')) return " class=\"n gain\"";
  return " class=\"n\"";
}

}  // namespace

std::string HtmlTable::RowOf(const char* tag, const std::vector<std::string>& texts, const std::string& anchor) const {
  std::string row = "<tr>";
  for (std::size_t at = 0; at < Columns.size(); ++at) {
    const bool isLink = at == 0 && !anchor.empty();
    row += std::string("<") + tag + ClassOf(Columns[at].What, texts[at]) + ">";
    if (isLink) row += "<a href=\"#" + anchor + "\">";
    row += EscapedXml(texts[at]) + (isLink ? "</a>" : "") + "</" + tag + ">";
  }
  return row + "</tr>\n";
}

void HtmlTable::AddRow(const std::vector<std::string>& texts, const std::string& anchor) {
  Body += RowOf("td", texts, anchor);
}

void HtmlTable::SetSums(const std::vector<std::string>& texts) {
  Foot = RowOf("td", texts, {});
}

std::string HtmlTable::Html() const {
  std::string head = "<tr>";
  for (const Column& column : Columns)
    head += std::string("<th") + ClassOf(column.What, {}) + ">" + EscapedXml(column.Title) + "</th>";
  std::string html = "<table>\n<thead>" + head + "</tr></thead>\n<tbody>\n" + Body + "</tbody>\n";
  if (!Foot.empty()) html += "<tfoot>\n" + Foot + "</tfoot>\n";
  return html + "</table>\n";
}
