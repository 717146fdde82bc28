// OptionParser: the command line of a program by tables of its options and exit codes, which feed parsing and help.
#pragma once

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// A row has Name, Value (null for an option without one) and Help.
class OptionParser {
 public:
  // Throws the program's own error with that sentence.
  using RefuseFunction = void (*)(const std::string& sentence);

  OptionParser(const char* about, const char* program, std::size_t helpColumn, RefuseFunction refuse)
      : RefuseSentence(refuse), App(about, program) {
    App.set_help_flag();
    App.allow_windows_style_options(false);
    App.allow_extras();
    App.get_formatter()->column_width(helpColumn);
  }
  OptionParser(const OptionParser&) = delete;
  OptionParser& operator=(const OptionParser&) = delete;

  // take is called with the value, empty for an option without one. An option given twice keeps its last value.
  template <typename Row, typename Take>
  void Add(const Row& row, Take take) {
    if (row.Value == nullptr) {
      App.add_flag_function(
             row.Name, [take](std::int64_t) { take(std::string()); }, row.Help)
          ->disable_flag_override();
      return;
    }
    // A value that is the name of an option shows that its own was forgotten.
    const auto check = [this, &row, take](const std::string& value) {
      if (value.starts_with("--") && App.get_option_no_throw(value) != nullptr)
        RefuseSentence(std::string(row.Name) + " needs a value");
      take(value);
    };
    App.add_option_function<std::string>(row.Name, check, row.Help)->type_name(row.Value)->take_last();
  }
  // Behind the options in the help.
  void AddFooter(const std::string& text) { App.footer(text); }
  // Returns the words that no option takes.
  std::vector<std::string> Parse(std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());  // as the library takes a vector
    try {
      App.parse(std::move(words));
    } catch (const CLI::ParseError& error) {
      RefuseSentence(OurWords(error.what()));
    }
    return App.remaining();
  }
  std::string Help() const { return App.help(); }

  // Of rows with Code and Help.
  template <typename Row, std::size_t Count>
  static std::string ExitCodesText(const Row (&rows)[Count]) {
    std::string text = "Exit codes:\n";
    for (const Row& row : rows) text += "  " + std::to_string(static_cast<int>(row.Code)) + "  " + row.Help + "\n";
    return text;
  }

 private:
  // The errors of the library in the words of the others.
  static std::string OurWords(const std::string& sentence) {
    const std::size_t missing = sentence.find(": 1 required");
    if (missing != std::string::npos) return sentence.substr(0, missing) + " needs a value";
    const std::size_t given = sentence.find(" was given a disallowed flag override");
    return given == std::string::npos ? sentence : "--" + sentence.substr(0, given) + " takes no value";
  }

  RefuseFunction RefuseSentence;
  CLI::App App;
};
