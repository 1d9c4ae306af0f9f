#include "base/text_builder.h"

#include <algorithm>
#include <utility>

namespace corvelle {

void TextBuilder::append(std::u16string_view text) noexcept {
  if (room_.failed()) return;
  if (text.size() > room_.size() - length_) {
    Text larger = Text::of_length(2 * (length_ + text.size()));
    if (!larger.failed()) std::copy_n(room_.data(), length_, larger.data());
    room_ = std::move(larger);
    if (room_.failed()) return;
  }
  std::copy(text.begin(), text.end(), room_.data() + length_);
  length_ += text.size();
}

Text TextBuilder::text() noexcept {
  const std::size_t length = std::exchange(length_, 0);
  if (!room_.failed()) room_.keep_first(length);
  return std::move(room_);
}

}  // namespace corvelle
