#include "datenum/decimal_format.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "datenum/decimal_number.h"

namespace corvelle {
namespace {

// Adds one to the number whose digits stand from `first` to `last`, and gives where they stand from then on:
// a carry out of the first digit puts a new one before it.
char16_t* add_one(char16_t* first, char16_t* last) {
  while (last != first && last[-1] == u'9') *--last = u'0';
  if (last == first) {
    *--first = u'1';
  } else {
    ++last[-1];
  }
  return first;
}

// `number` with `places` decimal places, half away from zero.
Text rounded(const DecimalNumber& number, int places, std::u16string_view separator) {
  char16_t room[2 + kMaxIntegerDigits + kMaxPlaces + std::size(SymbolText{}.units)];
  char16_t* first = room + 2;  // a sign and a carried digit may come before
  char16_t* const last = first + std::max<std::int64_t>(number.point, 1) + places;

  char16_t* next = first;
  if (number.point <= 0) next = std::fill_n(next, 1 + std::min<std::int64_t>(-number.point, places), u'0');
  const std::int64_t kept = number.point + places;
  next = std::copy_n(number.digits, std::clamp<std::int64_t>(kept, 0, number.count), next);
  std::fill(next, last, u'0');
  if (kept >= 0 && kept < number.count && number.digits[kept] >= u'5') first = add_one(first, last);

  char16_t* const end = last + separator.size();
  std::copy_backward(last - places, last, end);
  std::copy(separator.begin(), separator.end(), last - places);
  if (number.negative) *--first = u'-';
  return Text({first, static_cast<std::size_t>(end - first)});
}

Text formatted(std::u16string_view text, int places, const NumberSymbols& symbols) {
  DecimalNumber number;
  if (!read_number(text, symbols, number)) return Text(text);
  return rounded(number, places, symbols.decimal_separator.view());
}

// What of a text is looked at beforehand; longer than any number that somebody wrote.
constexpr std::size_t kLookedAt = 64;

// False where no symbols make a number of `text`: it has neither a digit nor the "&" of bits.
bool may_be_number(std::u16string_view text) {
  const auto begins_number = [](char16_t unit) { return (unit >= u'0' && unit <= u'9') || unit == u'&'; };
  return text.size() > kLookedAt || std::any_of(text.begin(), text.end(), begins_number);
}

// Where a text has its first character that is neither a digit nor a blank.
enum class Place : std::uint8_t { anywhere, before_digits, behind_blank };

// What such a character may be. Before the first digit nothing is grouped; behind a blank, the number is over but where
// blanks group.
constexpr bool may_be(Symbol symbol, Place place) {
  if (place == Place::before_digits) return symbol != Symbol::grouping && symbol != Symbol::currency_grouping;
  return place == Place::anywhere || (symbol != Symbol::decimal && symbol != Symbol::currency_decimal);
}

// The symbols in the order in which a text is likely to need them: those first that its first such character may be,
// and the usual negative sign says that there is a sign.
struct Order {
  constexpr Order(Place place, bool has_minus) {
    auto usual = kSymbols;
    if (!has_minus) std::swap(usual[1], usual[2]);
    for (const Symbol symbol : usual) {
      if (may_be(symbol, place)) symbols[candidates++] = symbol;
    }
    std::size_t last = candidates;
    for (const Symbol symbol : usual) {
      if (!may_be(symbol, place)) symbols[last++] = symbol;
    }
  }

  std::array<Symbol, kSymbols.size()> symbols = {};
  std::uint8_t candidates = 0;  // how many of them that character may be
};
constexpr Order kOrders[][2] = {{{Place::anywhere, false}, {Place::anywhere, true}},
                                {{Place::before_digits, false}, {Place::before_digits, true}},
                                {{Place::behind_blank, false}, {Place::behind_blank, true}}};

// The first character that a number has only where it is one of the user's symbols.
struct Suspect {
  explicit Suspect(std::u16string_view text) {
    bool behind_digits = false;
    for (const char16_t unit : text) {
      if (!is_digit(unit) && !is_blank(unit)) {
        const bool is_numbers_own = unit == u'(' || unit == u')' || unit == u'&' || (unit | 0x20) == u'e';
        if (is_numbers_own) return;
        character = unit;
        place = !behind_digits ? Place::before_digits : blank != kNoSymbol ? Place::behind_blank : Place::anywhere;
        if (place != Place::behind_blank) blank = unit;
        return;
      }
      behind_digits = behind_digits || is_digit(unit);
      blank = is_digit(unit) ? kNoSymbol : unit;
    }
  }

  // Whether it is one of `symbols`; where the blank before it is, it may be any.
  bool is_cleared_by(const NumberSymbols& symbols) const {
    return character == symbols.decimal_separator.units[0] || character == symbols.negative_sign ||
           character == symbols.positive_sign || character == symbols.currency_decimal_separator ||
           character == symbols.grouping_separator || character == symbols.currency_grouping_separator ||
           blank == symbols.grouping_separator || blank == symbols.currency_grouping_separator ||
           symbols.currency.view().find(character) != std::u16string_view::npos;
  }

  char16_t character = kNoSymbol;  // where there is none, or none is looked for
  char16_t blank = kNoSymbol;      // the one before it, where there is one and a digit somewhere before, or itself
  Place place = Place::anywhere;
};

// With the user's symbols. What is a number by some of them is the same number by all.
Text formatted(std::u16string_view text, int places) {
  if (!may_be_number(text)) return Text(text);
  const std::u16string_view start = text.substr(0, kLookedAt);
  const Suspect suspect(start);
  const Order& order =
      kOrders[static_cast<std::size_t>(suspect.place)][start.find(u'-') != std::u16string_view::npos ? 1 : 0];
  NumberSymbols symbols{.decimal_separator = {}, .negative_sign = kNoSymbol, .positive_sign = kNoSymbol};
  DecimalNumber number;
  bool cleared = suspect.character == kNoSymbol;
  for (std::size_t i = 0; i < order.symbols.size() && (cleared || i < order.candidates); ++i) {
    take_user_symbol(order.symbols[i], symbols);
    cleared = cleared || suspect.is_cleared_by(symbols);
    const bool can_be_written = symbols.decimal_separator.units[0] != kNoSymbol;
    if (cleared && can_be_written && read_number(text, symbols, number)) {
      return rounded(number, places, symbols.decimal_separator.view());
    }
  }
  return Text(text);
}

bool is_index(std::int16_t index) { return index >= 1 && index <= kMaxPlaces; }

}  // namespace

Text GetDecimalFmt(std::u16string_view /*sglData*/) { return {}; }

Text GetDecimalFmt_4(std::u16string_view sglData) { return formatted(sglData, 4); }

Text GetDecimalFmt_4(std::u16string_view sglData, const NumberSymbols& symbols) {
  return formatted(sglData, 4, symbols);
}

Text GetDecimalFmt_8(std::u16string_view sglData) { return formatted(sglData, 8); }

Text GetDecimalFmt_8(std::u16string_view sglData, const NumberSymbols& symbols) {
  return formatted(sglData, 8, symbols);
}

Text GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex) {
  return is_index(sglIndex) ? formatted(sglData, sglIndex) : Text(sglData);
}

Text GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const NumberSymbols& symbols) {
  return is_index(sglIndex) ? formatted(sglData, sglIndex, symbols) : Text(sglData);
}

}  // namespace corvelle
