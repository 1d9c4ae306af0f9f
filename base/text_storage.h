// base/text_storage.h - where a Text lives: a BSTR on Windows, plain memory elsewhere.
#pragma once

#include <cstddef>
#include <string_view>

namespace corvelle {

// Room for `length` code units and a NUL behind them; null where there is none.
char16_t* allocate_text(std::size_t length) noexcept;

// The same with `content` in it.
char16_t* copy_text(std::u16string_view content) noexcept;

// `storage` cut to its first `length` code units, no more than it holds; the address may change. Null where that cannot
// be had: `storage` is then as it was.
char16_t* shrink_text(char16_t* storage, std::size_t length) noexcept;

}  // namespace corvelle
