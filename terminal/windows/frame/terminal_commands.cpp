#include "terminal/windows/frame/terminal_commands.h"

namespace {

using enum TerminalCommand;
using enum CommandRow::Form;

constexpr KeyPress Ctrl(char letter) {
  return {.Code = static_cast<std::uint8_t>(letter), .Ctrl = true};
}
constexpr KeyPress FunctionKey(int number) {
  return {.Code = static_cast<std::uint8_t>(0x6F + number)};
}

constexpr CommandRow kRows[] = {
    {OpenDay, L"&File", L"&Open Day...", Ctrl('O'), Plain, false, L"Play another day"},
    {Exit, L"&File", L"E&xit", Ctrl('Q'), Plain, true, L"Close the terminal; the books come back at the next start"},
    {PlayOrPause, L"&Day", L"&Pause", FunctionKey(5), Check, false, L"Hold the live trades, or let them go on"},
    {RealTime, L"&Day", L"&Real Time", Ctrl('1'), Radio, true, L"Live trades as they came on the day"},
    {TenTimes, L"&Day", L"&10 Times", Ctrl('2'), Radio, false, L"Live trades ten times as fast"},
    {SixtyTimes, L"&Day", L"&60 Times", Ctrl('3'), Radio, false, L"Live trades sixty times as fast"},
    {FullSpeed, L"&Day", L"As &Fast As Possible", Ctrl('4'), Radio, false, L"Live trades without waiting"},
    {StartAgain, L"&Day", L"&Start Again", Ctrl('B'), Plain, true, L"Play the day from its begin"},
    {NewLogin, L"&Day", L"New &Login", Ctrl('L'), Plain, false, L"Log in anew: the trades so far come once more"},
    {RefreshBooks, L"&Day", L"Refresh &Books", Ctrl('R'), Plain, false, L"Have every book apply its filter again"},
    {MarketWatch, L"&View", L"&Market Watch", Ctrl('M'), Check, false, L"Show or hide the market watch"},
    {Properties, L"&View", L"&Properties", Ctrl('P'), Check, false, L"Show or hide the properties of a book"},
    {Messages, L"&View", L"M&essages", Ctrl('E'), Check, false, L"Show or hide the log of messages"},
    {Keys, L"&Help", L"&Keys", FunctionKey(1), Plain, false, L"The keys of terminal and books"},
    {About, L"&Help", L"&About", FunctionKey(12), Plain, false, L"Versions"},
};

}  // namespace

std::span<const CommandRow> CommandRows() {
  return kRows;
}
