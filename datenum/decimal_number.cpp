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

constexpr NumberSymbols kOtherwise{.decimal_separator = {u"."},
                                   .negative_sign = {u"-"},
                                   .positive_sign = {u"+"},
                                   .currency = {u"$"},
                                   .currency_grouping_separator = {u","}};

class NumberReader {
 public:
  NumberReader(std::u16string_view text, WantedSymbols& symbols, DecimalNumber& number)
      : next_(text.data()), end_(text.data() + text.size()), filled_end_(end_), symbols_(symbols), number_(number) {
    while (filled_end_ != next_ && is_blank(filled_end_[-1])) --filled_end_;
  }

  bool read() {
    number_.negative = false;
    number_.point = 0;
    number_.count = 0;
    if (!take_opening()) return false;
    const bool may_be_bits = !is_money_ && !is_fraction_;
    if (!(may_be_bits && take(u'&') ? take_bits() : take_decimal())) return false;
    take_closing();
    if (!is_bits_) number_.negative = is_negative_;
    return is_at_end() && (is_negative_ || !opened_.parenthesis);
  }

 private:
  // Blanks at the end count for nothing, whatever else a blank is, but that bits have no groups.
  bool is_at_end() const { return next_ >= (is_bits_ ? end_ : filled_end_); }

  bool at(char16_t unit) const { return next_ != end_ && *next_ == unit && unit != kNoSymbol; }
  bool at(Symbol symbol) { return at(symbols_[symbol].units[0]); }

  template <class Wanted>
  bool take(Wanted wanted) {
    if (!at(wanted)) return false;
    ++next_;
    return true;
  }

  template <class Wanted>
  bool take_once(Wanted wanted, bool& taken) {
    return !taken && (taken = take(wanted));
  }

  bool take_letter(char16_t lower) { return take(lower) || take(static_cast<char16_t>(lower - u'a' + u'A')); }

  bool take_blanks() {
    const char16_t* const first = next_;
    while (next_ != end_ && is_blank(*next_)) ++next_;
    return next_ != first;
  }

  bool take_currency() {
    const std::u16string_view symbol = symbols_[Symbol::currency].view();
    const std::u16string_view rest(next_, static_cast<std::size_t>(end_ - next_));
    if (!rest.starts_with(symbol)) return false;
    next_ += symbol.size();
    return true;
  }

  // A no-break space has plain ones group, too; the currency's has not.
  bool at_numbers_grouping() {
    if (at(Symbol::grouping)) return true;
    return at(u' ') && symbols_[Symbol::grouping].units[0] == u'\u00A0' && !at(Symbol::decimal);
  }

  bool at_grouping() {
    if (at_numbers_grouping()) return true;
    const bool is_currencys = at(Symbol::currency_grouping);
    is_money_ = is_money_ || is_currencys;
    return is_currencys;
  }

  bool take_opening_sign() {
    if (take_once(Symbol::negative, opened_.negative)) return is_negative_ = true;
    return take_once(Symbol::positive, opened_.positive);
  }

  // False where a grouping separator stands before the number.
  bool take_opening() {
    while (next_ != end_ && !is_digit(*next_) && *next_ != u'&') {
      if (take_once(u'(', opened_.parenthesis)) continue;
      if (take(Symbol::decimal)) return is_fraction_ = true;
      if (!is_blank(*next_) && take_opening_sign()) continue;
      if (take(Symbol::currency_decimal)) return is_fraction_ = is_money_ = true;
      if (take_blanks()) continue;
      if (at_grouping()) return false;
      if (is_money_ || !take_currency()) return true;
      is_money_ = true;
    }
    return true;
  }

  void take_closing() {
    while (!is_at_end()) {
      if (at_grouping()) {
        if (is_bits_) return;
        ++next_;
      } else if (take_blanks() || (!opened_.positive && take(Symbol::positive))) {
        continue;
      } else if ((!opened_.negative && take(Symbol::negative)) || (opened_.parenthesis && take(u')'))) {
        is_negative_ = true;
      } else if (is_bits_ || !take_currency()) {
        return;
      }
    }
  }

  void add_digit(char16_t digit, bool is_fraction) {
    const bool leading_zero = digit == u'0' && number_.count == 0;
    if (is_fraction == leading_zero) number_.point += is_fraction ? -1 : 1;
    if (!leading_zero && number_.count < kMaxSignificantDigits) number_.digits[number_.count++] = digit;
  }

  bool take_decimal() {
    bool any_digit = false;
    bool has_exponent = false;
    for (; next_ < filled_end_; ++next_) {
      const char16_t unit = *next_;
      if (is_digit(unit)) {
        any_digit = true;
        add_digit(unit, is_fraction_);
      } else if ((unit | 0x20) == u'e' && !is_money_ && !has_exponent) {
        if (!take_exponent()) return false;
        has_exponent = true;
      } else if (at(Symbol::decimal)) {
        if (is_fraction_ || has_exponent) break;
        is_fraction_ = true;
      } else if (!at_grouping()) {
        if (!at(Symbol::currency_decimal) || is_fraction_ || has_exponent) break;
        is_fraction_ = is_money_ = true;
      }
    }
    if (number_.count == 0) number_.point = 0;
    return any_digit && !rounds_to_infinity();
  }

  // Stops at the exponent's last digit.
  bool take_exponent() {
    ++next_;
    bool is_negative = false;
    for (; next_ != end_ && !is_digit(*next_); ++next_) {
      if (at(Symbol::negative)) {
        is_negative = true;
      } else if (!at(Symbol::positive) && !at_grouping()) {
        return false;
      }
    }
    if (next_ == end_) return false;
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
    return next_ != first;
  }

  void set_digits(std::uint64_t value) {
    for (; value != 0; value /= 10) number_.digits[number_.count++] = static_cast<char16_t>(u'0' + value % 10);
    std::reverse(number_.digits, number_.digits + number_.count);
    number_.point = number_.count;
  }

  static constexpr std::uint64_t kSignBit = 0x80000000;

  const char16_t* next_;
  const char16_t* end_;
  const char16_t* filled_end_;  // behind the last character that is no blank
  WantedSymbols& symbols_;
  DecimalNumber& number_;
  struct {
    bool positive = false;
    bool negative = false;
    bool parenthesis = false;
  } opened_;
  bool is_negative_ = false;  // a negative sign or ")" was seen
  bool is_money_ = false;     // a currency symbol stood before the number, or one of the currency's separators in it
  bool is_fraction_ = false;  // a decimal separator was seen
  bool is_bits_ = false;
};

}  // namespace

bool is_blank(char16_t unit) {
  if (unit > u' ' && unit < 0x85) return false;
  return kBlanks.find(unit) != std::u16string_view::npos;
}

void WantedSymbols::take(Symbol symbol) {
  const auto index = static_cast<std::size_t>(symbol);
  SymbolText& text = texts_[index];
  text = ask_(symbol);
  if (text.units[0] == kNoSymbol) text = kOtherwise[symbol];
  known_ |= 1u << index;
  const bool groups = symbol == Symbol::grouping || symbol == Symbol::currency_grouping;
  if (groups && text.units[0] == (*this)[Symbol::decimal].units[0]) text = {};
}

bool read_number(std::u16string_view text, WantedSymbols& symbols, DecimalNumber& number) {
  return NumberReader(text, symbols, number).read();
}

}  // namespace corvelle
