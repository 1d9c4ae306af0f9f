#include "base/vectors/unit_map.h"

#include "base/slice.h"
#include "base/vectors/code_units.h"
#include "base/vectors/processor.h"
#include "base/vectors/scalar.h"

namespace corvelle {

std::size_t mapped_length(std::u16string_view text, const UnitMap& map) {
  return text.size() + count_unit(text, map.lengthened());
}

std::size_t copy_mapped(std::u16string_view text, const UnitMap& map, char16_t* to) {
  internal::Copied copied{0, 0};
  constexpr std::size_t kFew = 32;  // of which the vector code leaves all
  if (text.size() > kFew && has_avx2()) copied = internal::copy_mapped_avx2(text.data(), text.size(), map, to);
  return copied.written + scalar::copy_mapped(behind(text, copied.read), map, to + copied.written);
}

}  // namespace corvelle
