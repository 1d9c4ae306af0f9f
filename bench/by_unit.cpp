// What the operations find in base/vectors/code_units.cpp and unit_map.cpp, by the scalar twins.
#include "base/vectors/code_units.h"
#include "base/vectors/scalar.h"
#include "base/vectors/unit_map.h"

namespace corvelle {

std::size_t find_unit(std::u16string_view text, char16_t unit) { return scalar::find_unit(text, unit); }
std::size_t find_last_unit(std::u16string_view text, char16_t unit) { return scalar::find_last_unit(text, unit); }
std::size_t find_nth_unit(std::u16string_view text, char16_t unit, std::size_t n) {
  return scalar::find_nth_unit(text, unit, n);
}
std::size_t count_unit(std::u16string_view text, char16_t unit) { return scalar::count_unit(text, unit); }
std::size_t copy_without(std::u16string_view text, char16_t unit, char16_t* to) {
  return scalar::copy_without(text, unit, to);
}
std::size_t copy_range(std::u16string_view text, char16_t first, char16_t last, char16_t* to) {
  return scalar::copy_range(text, first, last, to);
}
void copy_every_second(std::u16string_view text, char16_t* to) { scalar::copy_every_second(text, to); }
void copy_with_pairs(std::u16string_view text, char16_t first, const char16_t* seconds, char16_t* to) {
  scalar::copy_with_pairs(text, first, seconds, to);
}
std::size_t mapped_length(std::u16string_view text, const UnitMap& map) {
  return text.size() + scalar::count_unit(text, map.lengthened());
}
std::size_t copy_mapped(std::u16string_view text, const UnitMap& map, char16_t* to) {
  return scalar::copy_mapped(text, map, to);
}

}  // namespace corvelle
