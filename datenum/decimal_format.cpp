#include "datenum/decimal_format.h"

#include <algorithm>
#include <iterator>

#include "base/function_ref.h"
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

// What of a text is looked at beforehand; longer than any number that somebody wrote.
constexpr std::size_t kLookedAt = 64;

// False where no symbols make a number of `text`: it has neither a digit nor the "&" of bits.
bool may_be_number(std::u16string_view text) {
  const auto begins_number = [](char16_t unit) { return (unit >= u'0' && unit <= u'9') || unit == u'&'; };
  return text.size() > kLookedAt || std::any_of(text.begin(), text.end(), begins_number);
}

Text formatted(std::u16string_view text, int places, FunctionRef<SymbolText(Symbol)> ask) {
  if (!may_be_number(text)) return Text(text);
  WantedSymbols symbols(ask);
  DecimalNumber number;
  if (!read_number(text, symbols, number)) return Text(text);
  return rounded(number, places, symbols[Symbol::decimal].view());
}

Text formatted(std::u16string_view text, int places, const NumberSymbols& symbols) {
  return formatted(text, places, [&](Symbol symbol) { return symbols[symbol]; });
}

// With the user's symbols.
Text formatted(std::u16string_view text, int places) {
  return formatted(text, places, [](Symbol symbol) { return user_symbol(symbol); });
}

bool is_index(std::int16_t index) { return index >= 1 && index <= kMaxPlaces; }

}  // namespace

Result<Text> GetDecimalFmt(std::u16string_view /*sglData*/) { return Text(); }

Result<Text> GetDecimalFmt_4(std::u16string_view sglData) { return formatted(sglData, 4); }

Result<Text> GetDecimalFmt_4(std::u16string_view sglData, const NumberSymbols& symbols) {
  return formatted(sglData, 4, symbols);
}

Result<Text> GetDecimalFmt_8(std::u16string_view sglData) { return formatted(sglData, 8); }

Result<Text> GetDecimalFmt_8(std::u16string_view sglData, const NumberSymbols& symbols) {
  return formatted(sglData, 8, symbols);
}

Result<Text> GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex) {
  return is_index(sglIndex) ? formatted(sglData, sglIndex) : Text(sglData);
}

Result<Text> GetDecimalFmt_Bus(std::u16string_view sglData, std::int16_t sglIndex, const NumberSymbols& symbols) {
  return is_index(sglIndex) ? formatted(sglData, sglIndex, symbols) : Text(sglData);
}

}  // namespace corvelle
