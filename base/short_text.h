// base/short_text.h - a text of few characters, without an allocation.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace corvelle {

// A text of at most `kCapacity` code units, held in the object itself, with a NUL behind it.
//   ShortText<8>().append(u"ab").append(u"c") is "abc"
template <std::size_t kCapacity, class Unit = char16_t>
class ShortText {
 public:
  using View = std::basic_string_view<Unit>;

  // Adds `text`, or as much of it as there is room for.
  constexpr ShortText& append(View text) {
    const std::size_t length = std::min(text.size(), kCapacity - size_);
    std::copy_n(text.data(), length, units_ + size_);
    size_ += length;
    return *this;
  }

  constexpr const Unit* c_str() const { return units_; }
  // NOLINTNEXTLINE(google-explicit-constructor): it is a text
  constexpr operator View() const { return {units_, size_}; }

 private:
  Unit units_[kCapacity + 1] = {};
  std::size_t size_ = 0;
};

}  // namespace corvelle
