// tests/reference/number_settings.h - symbols that a user may have set, and number texts for them.
#pragma once

#include <cstdint>
#include <string>

#include "datenum/number_symbols.h"
#include "tests/reference/choices.h"
#include "tests/reference/decimal_model.h"

namespace corvelle::testing {

inline constexpr std::int16_t kSettings = 2000;

// The setting of this number, below kSettings: none, some of the world's, and then what users make of them by chance,
// with symbols that are empty, equal, of several characters, or spaces.
reference::Symbols number_setting(std::int16_t number);

// The same symbols for the product.
NumberSymbols for_product(const reference::Symbols& symbols);

// A text that is a number with these symbols, or just misses being one.
std::u16string number_text(Choices& choices, const reference::Symbols& symbols);

}  // namespace corvelle::testing
