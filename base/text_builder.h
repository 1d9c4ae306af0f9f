// base/text_builder.h - a text put together piece by piece.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/text.h"

namespace corvelle {

// TextBuilder grows with what is added to it. One that found no memory gives a Text that has failed.
//   TextBuilder builder(3); builder.append(u"a-"); builder.append(u"b"); builder.text() == u"a-b"
class TextBuilder {
 public:
  // With room for `expected` code units to begin with.
  explicit TextBuilder(std::size_t expected) noexcept : room_(Text::of_length(expected)) {}

  void append(std::u16string_view text) noexcept;

  // The whole; nothing is left here.
  Text text() noexcept;

 private:
  Text room_;
  std::size_t length_ = 0;
};

}  // namespace corvelle
