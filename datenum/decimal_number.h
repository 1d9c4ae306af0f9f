// datenum/decimal_number.h - number texts, read digit by digit.
#pragma once

#include <cstdint>
#include <string_view>

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

// Reads `text` into `number` and says whether it is a number as the platform's conversion to a double sees it;
// where it is none, `number` holds nothing of use.
//   number   = opening ( decimal | bits ) closing
//   opening  = blanks, and once each, in any order: positive sign, negative sign, currency symbol, "("
//   decimal  = at least one digit; grouping separators behind the first character; one decimal separator anywhere;
//              one exponent, behind the decimal separator and not where a currency symbol opened
//   exponent = ( "e" | "E" ) { sign | grouping separator } digits
//   bits     = "&H" hexadecimal digits | "&O" octal digits
//   closing  = in any number and order: blanks, signs of a kind that did not open, ")" where "(" opened, and, not
//   behind
//              bits, currency symbols and grouping separators
// "(" needs its ")"; both are a negative sign. A currency's separators serve in every number, where the locale does not
// use the character otherwise.
// Kept: a negative sign closes "(" too. Digits behind a grouping separator behind the exponent continue the digits
// before it, so 1e3,5 is 15e3. Bits ignore their sign, and &H80000000 is -2147483648.
// Not a number: what a double rounds to infinity, and bits beyond &H80000000.
bool read_number(std::u16string_view text, const NumberSymbols& symbols, DecimalNumber& number);

}  // namespace corvelle
