#pragma once

#include <string>
#include <string_view>

/// Takes the values that scripts write into tokens. Blanks separate. A decimal number up to the next blank, separator
/// or end is a number. Double quotes, a quote inside doubled, make a quoted text. The characters | : , ; come as
/// themselves. Anything else is a bare text, up to the next separator or the end, without the blanks at its end: so
/// `Never married` and `18-25` are texts, `2` is a number and `"2"` is a text.
class CLittleParser {
  public:
    static constexpr int End = 0;
    static constexpr int Number = 2;
    static constexpr int BareText = 3;
    static constexpr int QuotedText = 4;

    /// Analyses give 1, the text, null and 0. The text outlives the parser.
    CLittleParser(int reserved1, const char* text, const char* reserved2, int reserved3);

    /// The code of the next token: one of those above, or the separator's own character.
    int GetSymbol();

    // The value of the last token. A number is cut to an int, at most to its limits; the text of a number is as
    // written.

    [[nodiscard]] int GetLastNumber() const;
    [[nodiscard]] double GetLastDouble() const { return Real; }
    [[nodiscard]] const std::string& GetLastTextVal() const { return Text; }

  private:
    std::string_view Rest;
    double Real = 0.0;
    std::string Text;
};
