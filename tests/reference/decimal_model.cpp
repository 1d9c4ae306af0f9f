#include "tests/reference/decimal_model.h"

#include <algorithm>
#include <optional>

namespace corvelle::reference {
namespace {

// A number in decimal: the digits, without leading zeros, times ten to the power `exponent`.
struct Decimal {
  bool negative = false;
  std::u16string digits;  // none for zero
  std::int64_t exponent = 0;
};

constexpr std::int64_t kHugeExponent = 1'000'000'000'000;

bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool is_blank(char16_t unit) {
  return (unit >= 0x09 && unit <= 0x0D) || unit == 0x20 || unit == 0x85 || unit == 0xA0 || unit == 0x1680 ||
         (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F ||
         unit == 0x3000;
}

void remove_leading_zeros(std::u16string& digits) { digits.erase(0, digits.find_first_not_of(u'0')); }

std::u16string doubled(const std::u16string& digits) {
  std::u16string result;
  int carry = 0;
  for (std::size_t place = digits.size(); place-- > 0;) {
    const int sum = 2 * (digits[place] - u'0') + carry;
    result.insert(result.begin(), static_cast<char16_t>(u'0' + sum % 10));
    carry = sum / 10;
  }
  return carry > 0 ? u"1" + result : result;
}

std::u16string plus_one(std::u16string digits) {
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit != u'9') {
      ++*digit;
      return digits;
    }
    *digit = u'0';
  }
  return u"1" + digits;
}

// The least whole number that a double rounds to infinity: 2^1024 - 2^970, half a step above the largest double.
const std::u16string& infinity() {
  static const std::u16string number = [] {
    std::u16string digits = u"18014398509481983";  // 2^54 - 1
    for (int i = 0; i < 970; ++i) digits = doubled(digits);
    return digits;
  }();
  return number;
}

bool is_infinite(const Decimal& number) {
  if (number.digits.empty()) return false;
  const auto limit = static_cast<std::int64_t>(infinity().size());
  const std::int64_t integer_digits = static_cast<std::int64_t>(number.digits.size()) + number.exponent;
  if (integer_digits != limit) return integer_digits > limit;
  std::u16string integer = number.digits;
  integer.resize(infinity().size(), u'0');
  return integer >= infinity();
}

// What a conversion makes of a locale's symbols: the usual ones for some that are missing, and no groups by the
// character that begins decimals.
Symbols completed(Symbols symbols) {
  const auto complete = [](std::u16string& symbol, std::u16string_view usual) {
    if (symbol.empty()) symbol = usual;
  };
  complete(symbols.decimal_separator, u".");
  complete(symbols.negative_sign, u"-");
  complete(symbols.positive_sign, u"+");
  complete(symbols.currency, u"$");
  complete(symbols.currency_grouping_separator, u",");
  const char16_t decimal = symbols.decimal_separator.front();
  if (symbols.grouping_separator.starts_with(decimal)) symbols.grouping_separator.clear();
  if (symbols.currency_grouping_separator.starts_with(decimal)) symbols.currency_grouping_separator.clear();
  return symbols;
}

// Reads a text from its first character to its last.
class Reader {
 public:
  Reader(std::u16string_view text, const Symbols& completed) : text_(text), symbols_(completed) {}

  std::optional<Decimal> number() {
    if (!opening()) return std::nullopt;
    Decimal result;
    if (here() == u'&' && !money_ && !fraction_) {
      if (!bits(result)) return std::nullopt;
      closing();
    } else {
      if (!decimal(result)) return std::nullopt;
      closing();
      result.negative = minus_ || opened_;
    }
    if (!text_.empty()) return std::nullopt;
    if (opened_ && !closed_ && !minus_) return std::nullopt;  // a negative sign says as much as the closing one
    if (is_infinite(result)) return std::nullopt;
    return result;
  }

 private:
  static constexpr char16_t kEnd = 0xFFFF;  // no symbol, no digit, no blank

  char16_t here() const { return text_.empty() ? kEnd : text_.front(); }
  bool at(const std::u16string& symbol) const { return !symbol.empty() && text_.starts_with(symbol.front()); }
  bool at_currency() const { return text_.starts_with(symbols_.currency); }
  bool at_decimal_separator() const { return at(symbols_.decimal_separator); }
  bool at_currencys_decimal_separator() const { return at(symbols_.currency_decimal_separator); }
  bool at_currencys_grouping_separator() const { return at(symbols_.currency_grouping_separator); }

  bool at_grouping_separator() const {
    if (at(symbols_.grouping_separator)) return true;
    return symbols_.grouping_separator.starts_with(u'\u00A0') && here() == u' ' && !at_decimal_separator();
  }

  bool at_any_grouping_separator() const { return at_grouping_separator() || at_currencys_grouping_separator(); }

  void step(std::size_t units = 1) { text_.remove_prefix(units); }

  void step_over_blanks() {
    while (is_blank(here())) step();
  }

  // The order is the rule, here and below: it says what a character is that is several things.
  bool opening() {
    while (true) {
      const bool blank = is_blank(here());
      if (at_decimal_separator()) {
        fraction_ = true;
        step();
        return true;
      }
      if (!blank && at(symbols_.negative_sign) && !minus_) {
        minus_ = true;
        step();
      } else if (!blank && at(symbols_.positive_sign) && !plus_) {
        plus_ = true;
        step();
      } else if (at_currencys_decimal_separator()) {
        fraction_ = money_ = true;
        step();
        return true;
      } else if (blank) {
        step_over_blanks();
      } else if (at_any_grouping_separator()) {
        return false;
      } else if (at_currency() && !money_) {
        money_ = true;
        step(symbols_.currency.size());
      } else if (here() == u'(' && !opened_) {
        opened_ = true;
        step();
      } else {
        return true;
      }
    }
  }

  // Signs and parentheses count for nothing.
  bool bits(Decimal& result) {
    step();
    const bool hexadecimal = here() == u'H' || here() == u'h';
    if (!hexadecimal && here() != u'O' && here() != u'o') return false;
    step();
    const std::u16string_view allowed = hexadecimal ? u"0123456789ABCDEFabcdef" : u"01234567";
    const std::size_t count = std::min(text_.find_first_not_of(allowed), text_.size());
    if (count == 0) return false;
    std::uint64_t value = 0;
    for (; allowed.find(here()) != std::u16string_view::npos; step()) {
      const std::size_t digit = allowed.find(here());
      value = value * (hexadecimal ? 16 : 8) + (digit < 16 ? digit : digit - 6);
      if (value > 0x80000000) return false;
    }
    result.negative = value == 0x80000000;
    for (; value > 0; value /= 10)
      result.digits.insert(result.digits.begin(), static_cast<char16_t>(u'0' + value % 10));
    bits_ = true;
    return true;
  }

  bool decimal(Decimal& result) {
    bool any = false;
    bool exponent_seen = false;
    for (; !text_.empty(); step()) {
      if (is_digit(here())) {
        // As the platform has it: behind a grouping separator behind the exponent the number's own digits go on.
        any = true;
        result.digits += here();
        if (fraction_) --result.exponent;
      } else if (at_grouping_separator()) {
        continue;
      } else if (at_currencys_grouping_separator()) {
        money_ = true;
      } else if (at_decimal_separator() || at_currencys_decimal_separator()) {
        if (fraction_ || exponent_seen) break;
        fraction_ = true;
        money_ = money_ || !at_decimal_separator();
      } else if (!money_ && !exponent_seen && (here() == u'e' || here() == u'E')) {
        if (!exponent(result)) return false;
        exponent_seen = true;
      } else {
        break;
      }
    }
    remove_leading_zeros(result.digits);
    return any;
  }

  // Stops before the exponent's last digit.
  bool exponent(Decimal& result) {
    step();
    bool negative = false;
    for (; at(symbols_.positive_sign) || at(symbols_.negative_sign) || at_any_grouping_separator(); step()) {
      if (at(symbols_.negative_sign)) negative = true;
    }
    if (!is_digit(here())) return false;
    std::int64_t size = here() - u'0';
    for (; text_.size() > 1 && is_digit(text_[1]); step())
      size = std::min(10 * size + (text_[1] - u'0'), kHugeExponent);
    result.exponent += negative ? -size : size;
    return true;
  }

  void closing() {
    const bool plus_opened = plus_;
    const bool minus_opened = minus_;
    while (true) {
      if (at_any_grouping_separator()) {
        if (bits_) return;
        step();
      } else if (is_blank(here())) {
        step_over_blanks();
      } else if (at(symbols_.positive_sign) && !plus_opened) {
        step();
      } else if (at(symbols_.negative_sign) && !minus_opened) {
        minus_ = true;
        step();
      } else if (here() == u')' && opened_) {
        closed_ = true;
        step();
      } else if (at_currency() && !bits_) {
        step(symbols_.currency.size());
      } else {
        return;
      }
    }
  }

  std::u16string_view text_;
  const Symbols& symbols_;
  bool plus_ = false;
  bool minus_ = false;
  bool money_ = false;
  bool fraction_ = false;
  bool opened_ = false;
  bool closed_ = false;
  bool bits_ = false;
};

// The number with exactly `places` decimal places, halves rounded away from zero.
std::u16string written(const Decimal& number, std::size_t places, const Symbols& symbols) {
  std::u16string integer;
  std::u16string fraction;
  const std::int64_t point = static_cast<std::int64_t>(number.digits.size()) + number.exponent;
  if (number.digits.empty() || point < -20) {
    integer = u"0";
  } else if (point <= 0) {
    fraction = std::u16string(static_cast<std::size_t>(-point), u'0') + number.digits;
  } else {
    std::u16string digits = number.digits;
    if (digits.size() < static_cast<std::size_t>(point)) digits.resize(static_cast<std::size_t>(point), u'0');
    integer = digits.substr(0, static_cast<std::size_t>(point));
    fraction = digits.substr(static_cast<std::size_t>(point));
  }
  fraction.resize(std::max(fraction.size(), places + 1), u'0');
  std::u16string all = integer + fraction.substr(0, places);
  if (fraction[places] >= u'5') all = plus_one(all);
  if (all.size() <= places) all.insert(0, places + 1 - all.size(), u'0');
  return (number.negative ? u"-" : u"") + all.substr(0, all.size() - places) + symbols.decimal_separator +
         all.substr(all.size() - places);
}

std::u16string formatted(std::u16string_view text, std::size_t places, const Symbols& symbols) {
  const Symbols read = completed(symbols);
  const std::optional<Decimal> number = Reader(text, read).number();
  return number ? written(*number, places, read) : std::u16string(text);
}

}  // namespace

bool is_number(std::u16string_view text, const Symbols& symbols) {
  const Symbols read = completed(symbols);
  return Reader(text, read).number().has_value();
}

std::u16string GetDecimalFmt(std::u16string_view /*sglData*/) { return u""; }

std::u16string GetDecimalFmt_4(std::u16string_view sglData, const Symbols& symbols) {
  return formatted(sglData, 4, symbols);
}

std::u16string GetDecimalFmt_8(std::u16string_view sglData, const Symbols& symbols) {
  return formatted(sglData, 8, symbols);
}

std::u16string GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const Symbols& symbols) {
  if (sglIndex < 1 || sglIndex > 8) return std::u16string(sglData);
  return formatted(sglData, static_cast<std::size_t>(sglIndex), symbols);
}

}  // namespace corvelle::reference
