#include "base/errors.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace corvelle {
namespace {

constexpr std::size_t kQuotedCharacters = 40;

std::size_t length_of(Pieces pieces) {
  std::size_t length = 0;
  for (const std::u16string_view piece : pieces) length += piece.size();
  return length;
}

char16_t* write(Pieces pieces, char16_t* to) {
  for (const std::u16string_view piece : pieces) to = std::copy(piece.begin(), piece.end(), to);
  return to;
}

}  // namespace

constinit const Error::Details Error::kOutOfMemory = {
    .hresult = static_cast<std::int32_t>(0x8007000E),
    .description = u"There is not enough memory.",
    .source = u"",
};

// The texts stand behind the details in one block.
const Error::Details* Error::details(std::int32_t hresult, Pieces beginning, Pieces rest, std::u16string_view source) {
  const std::size_t length = length_of(beginning) + length_of(rest);
  void* block = std::malloc(sizeof(Details) + (length + source.size() + 2) * sizeof(char16_t));
  if (block == nullptr) return &kOutOfMemory;
  auto* const description = reinterpret_cast<char16_t*>(static_cast<char*>(block) + sizeof(Details));
  char16_t* end = write(rest, write(beginning, description));
  *end++ = u'\0';
  *write({source}, end) = u'\0';
  return new (block) Details{hresult, {description, length}, {end, source.size()}};
}

Error::Error(std::int32_t hresult, Argument where, Pieces complaint, std::u16string_view source) noexcept
    : details_(details(hresult, {where.operation, u": ", where.name, u" "}, complaint, source)) {}

Error::Error(std::int32_t hresult, std::u16string_view description, std::u16string_view source) noexcept
    : details_(details(hresult, {description}, {}, source)) {}

void Error::Deleter::operator()(const Details* details) const noexcept {
  if (details != &kOutOfMemory) std::free(const_cast<Details*>(details));
}

Error out_of_memory() noexcept {
  Error error;
  error.details_.reset(&Error::kOutOfMemory);
  return error;
}

ShortText<20> decimal_text(std::int64_t value) noexcept {
  char16_t digits[20];
  char16_t* const end = digits + 20;
  char16_t* first = end;
  auto left = static_cast<std::uint64_t>(value);
  if (value < 0) left = -left;
  do {
    *--first = static_cast<char16_t>(u'0' + left % 10);
    left /= 10;
  } while (left != 0);
  if (value < 0) *--first = u'-';
  return ShortText<20>().append({first, static_cast<std::size_t>(end - first)});
}

ShortText<43> in_quotes(std::u16string_view value) noexcept {
  ShortText<43> result;
  result.append(u"\"").append({value.data(), std::min(value.size(), kQuotedCharacters)});
  if (value.size() > kQuotedCharacters) result.append(u"…");
  return result.append(u"\"");
}

}  // namespace corvelle
