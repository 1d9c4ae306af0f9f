#include "datenum/decimal_number.h"

#include <algorithm>

namespace corvelle {
namespace {

// Halfway between the largest double and the next power of two; from here on values round to infinity.
constexpr std::u16string_view kRoundsToInfinity =
    u"1797693134862315807937289714053034150799341327100378269361737789804449682927647509466490179775872070963"
    u"3028641669288791094655554785194040263065748867150582068190890200070838367627385484581771153176447573027"
    u"0069855571366959622842914819860834936475292719074168444365510704342711559699508093042880177904174497792";
static_assert(kRoundsToInfinity.size() == kMaxIntegerDigits);

// Exponents stop growing here, beyond what the digits of any text can make up for.
constexpr std::int64_t kHugeExponent = 1'000'000'000'000'000;

constexpr std::u16string_view kBlanks =
    u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u2028\u2029\u202F"
    u"\u205F\u3000";

// The value of a hexadecimal digit, 16 for what is none.
std::uint32_t bits_of(char16_t unit) {
  if (is_digit(unit)) return unit - u'0';
  const char16_t lower = unit | 0x20;
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10u : 16;
}

class NumberReader {
 public:
  NumberReader(std::u16string_view text, const NumberSymbols& symbols, DecimalNumber& number)
      : next_(text.data()), end_(text.data() + text.size()), symbols_(symbols), number_(number) {}

  bool read() {
    number_.negative = false;
    number_.point = 0;
    number_.count = 0;
    take_opening();
    if (!(take(u'&') ? take_bits() : take_decimal())) return false;
    take_closing();
    if (!is_bits_) number_.negative = is_negative_;
    return next_ == end_ && (is_negative_ || !opened_.parenthesis);
  }

 private:
  bool take(char16_t symbol) {
    if (next_ == end_ || *next_ != symbol || symbol == kNoSymbol) return false;
    ++next_;
    return true;
  }

  bool take_letter(char16_t lower) { return take(lower) || take(static_cast<char16_t>(lower - u'a' + u'A')); }

  bool take_blank() {
    if (next_ == end_ || !is_blank(*next_)) return false;
    ++next_;
    return true;
  }

  bool take_currency() {
    const std::u16string_view symbol = symbols_.currency.view();
    const std::u16string_view rest(next_, static_cast<std::size_t>(end_ - next_));
    if (symbol.empty() || !rest.starts_with(symbol)) return false;
    next_ += symbol.size();
    return true;
  }

  void take_opening() {
    for (;;) {
      if (take_blank()) continue;
      if (!opened_.positive && take(symbols_.positive_sign)) {
        opened_.positive = true;
      } else if (!opened_.negative && take(symbols_.negative_sign)) {
        opened_.negative = is_negative_ = true;
      } else if (!opened_.currency && take_currency()) {
        opened_.currency = true;
      } else if (!opened_.parenthesis && take(u'(')) {
        opened_.parenthesis = true;
      } else {
        return;
      }
    }
  }

  void take_closing() {
    for (;;) {
      if (take_blank() || (!opened_.positive && take(symbols_.positive_sign))) continue;
      if (!is_bits_ && (take_currency() || take_grouping())) continue;
      if ((opened_.parenthesis && take(u')')) || (!opened_.negative && take(symbols_.negative_sign))) {
        is_negative_ = true;
      } else {
        return;
      }
    }
  }

  bool is_decimal_separator(char16_t unit) const {
    if (unit == kNoSymbol) return false;
    if (unit == symbols_.decimal_separator.units[0]) return true;
    return unit == symbols_.currency_decimal_separator && unit != symbols_.grouping_separator;
  }

  bool is_exponent_mark(char16_t unit) const { return (unit | 0x20) == u'e' && !opened_.currency; }

  // For what is no decimal separator.
  bool is_grouping_separator(char16_t unit) const {
    if (unit == kNoSymbol) return false;
    return unit == symbols_.grouping_separator || unit == symbols_.currency_grouping_separator;
  }

  bool take_grouping() {
    if (next_ == end_ || is_decimal_separator(*next_) || !is_grouping_separator(*next_)) return false;
    ++next_;
    return true;
  }

  void add_digit(char16_t digit, bool is_fraction) {
    const bool leading_zero = digit == u'0' && number_.count == 0;
    if (is_fraction == leading_zero) number_.point += is_fraction ? -1 : 1;
    if (!leading_zero && number_.count < kMaxSignificantDigits) number_.digits[number_.count++] = digit;
  }

  bool take_decimal() {
    bool any_digit = false;
    bool is_fraction = false;
    bool has_exponent = false;
    for (; next_ != end_; ++next_) {
      const char16_t unit = *next_;
      if (is_digit(unit)) {
        any_digit = true;
        add_digit(unit, is_fraction);
      } else if (is_decimal_separator(unit)) {
        if (is_fraction || has_exponent) return false;
        is_fraction = true;
      } else if (is_exponent_mark(unit) && !has_exponent) {
        if (!take_exponent()) return false;
        has_exponent = true;
      } else if (!is_grouping_separator(unit) || !(any_digit || is_fraction || has_exponent)) {
        break;
      }
    }
    if (number_.count == 0) number_.point = 0;
    return any_digit && !rounds_to_infinity();
  }

  // Stops at the exponent's last digit.
  bool take_exponent() {
    ++next_;
    bool is_negative = false;
    for (;;) {
      if (take(symbols_.negative_sign)) {
        is_negative = true;
      } else if (!take(symbols_.positive_sign) && !take_grouping()) {
        break;
      }
    }
    if (next_ == end_ || !is_digit(*next_)) return false;
    std::int64_t exponent = 0;
    for (; next_ != end_ && is_digit(*next_); ++next_) {
      if (exponent < kHugeExponent) exponent = exponent * 10 + (*next_ - u'0');
    }
    --next_;
    number_.point += is_negative ? -exponent : exponent;
    return true;
  }

  bool rounds_to_infinity() const {
    if (number_.point != kMaxIntegerDigits) return number_.point > kMaxIntegerDigits;
    const auto compared = static_cast<std::size_t>(std::min(number_.count, kMaxIntegerDigits));
    return std::u16string_view(number_.digits, compared) >= kRoundsToInfinity;
  }

  bool take_bits() {
    is_bits_ = true;
    const std::uint32_t base = take_letter(u'h') ? 16 : take_letter(u'o') ? 8 : 0;
    const char16_t* const first = next_;
    std::uint64_t value = 0;
    for (; next_ != end_ && bits_of(*next_) < base; ++next_) {
      value = value * base + bits_of(*next_);
      if (value > kSignBit) return false;
    }
    number_.negative = value == kSignBit;
    set_digits(value);
    return next_ != first && !opened_.currency;
  }

  void set_digits(std::uint64_t value) {
    for (; value != 0; value /= 10) number_.digits[number_.count++] = static_cast<char16_t>(u'0' + value % 10);
    std::reverse(number_.digits, number_.digits + number_.count);
    number_.point = number_.count;
  }

  static constexpr std::uint64_t kSignBit = 0x80000000;

  const char16_t* next_;
  const char16_t* end_;
  const NumberSymbols& symbols_;
  DecimalNumber& number_;
  struct {
    bool positive = false;
    bool negative = false;
    bool currency = false;
    bool parenthesis = false;
  } opened_;
  bool is_negative_ = false;  // a negative sign or ")" was seen
  bool is_bits_ = false;
};

}  // namespace

bool is_blank(char16_t unit) {
  if (unit > u' ' && unit < 0x85) return false;
  return kBlanks.find(unit) != std::u16string_view::npos;
}

bool read_number(std::u16string_view text, const NumberSymbols& symbols, DecimalNumber& number) {
  return NumberReader(text, symbols, number).read();
}

}  // namespace corvelle
