// datenum/decimal_number.h - number texts, read digit by digit.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/function_ref.h"
#include "datenum/number_symbols.h"

namespace corvelle {

inline constexpr int kMaxPlaces = 8;           // decimal places that a pattern can ask for
inline constexpr int kMaxIntegerDigits = 309;  // digits before the decimal separator of the largest double
inline constexpr int kMaxSignificantDigits = kMaxIntegerDigits + kMaxPlaces + 1;  // no later one can change a result

// A number in decimal: 0.DIGITS times ten to the power `point`, without leading zeros.
// 12.5 has the digits "125" and the point 2, 0.05 has "5" and -1; zero has no digits and the point 0.
struct DecimalNumber {
  bool negative;       // may be set for zero too: "-0"
  std::int64_t point;  // at most kMaxIntegerDigits
  int count;           // of digits, at most kMaxSignificantDigits; later ones are left out
  char16_t digits[kMaxSignificantDigits];
};

// Whether the platform's conversion passes over `unit` at both ends of a number.
bool is_blank(char16_t unit);

constexpr bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

inline constexpr char16_t kNoSymbol = u'\0';

// The symbols that one text needs, as the platform's conversion takes them. Each is asked for when it is first wanted:
// asking the platform costs as much as reading a number, and most texts want the first one alone.
// For an empty symbol stands the usual one: "." before decimals, "-", "+", "$" for the currency, "," between its
// groups; numbers' groups and the currency's decimals have none. The decimal separator leaves no other use of its
// character in a number: neither numbers nor the currency group by it.
class WantedSymbols {
 public:
  explicit WantedSymbols(FunctionRef<SymbolText(Symbol)> ask) : ask_(ask) {}

  // The symbol of this kind, empty where there is none.
  const SymbolText& operator[](Symbol symbol) {
    const auto index = static_cast<std::size_t>(symbol);
    if ((known_ >> index & 1) == 0) take(symbol);
    return texts_[index];
  }

 private:
  void take(Symbol symbol);

  FunctionRef<SymbolText(Symbol)> ask_;
  unsigned known_ = 0;  // one bit for each symbol that was asked for
  SymbolText texts_[kSymbolCount];
};

// Reads `text` into `number` and says whether it is a number as the platform's conversion to a double sees it;
// where it is none, `number` holds nothing of use.
//   number   = opening ( decimal | bits ) closing
//   opening  = blanks, and once each, in any order: positive sign, negative sign, currency symbol, "("
//   decimal  = at least one digit; grouping separators behind the first character; one decimal separator anywhere;
//              one exponent, behind the decimal separator and not where money came before it
//   exponent = ( "e" | "E" ) { sign | grouping separator } digits
//   bits     = "&H" hexadecimal digits | "&O" octal digits, not behind money
//   closing  = in any number and order: blanks, signs of a kind that did not open, ")" where "(" opened, and, not
//              behind bits, currency symbols and grouping separators
// "(" needs its ")"; both are a negative sign. A currency's separators serve in every number; they and its symbol are
// what money means above. Where numbers group by U+00A0, plain spaces group, too; not where the currency alone does.
// A character with several uses has the first of these: before the digits it is the decimal separator, a sign, the
// currency's decimal separator, a blank, a grouping separator, the currency; from there on the decimal separator, a
// grouping one, the currency's decimal one; behind the number a grouping separator, a blank, a sign, the currency.
// Kept: a negative sign closes "(" too. Digits behind a grouping separator behind the exponent continue the digits
// before it, so 1e3,5 is 15e3. Bits ignore their sign, and &H80000000 is -2147483648.
// Not a number: what a double rounds to infinity, and bits beyond &H80000000.
bool read_number(std::u16string_view text, WantedSymbols& symbols, DecimalNumber& number);

}  // namespace corvelle
