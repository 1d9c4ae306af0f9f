#include "base/text.h"

#include <utility>

#include "base/text_storage.h"

namespace corvelle {

Text::Text(std::u16string_view content)
    : storage_(content.empty() ? nullptr : copy_text(content)), size_(content.size()) {}

Text Text::of_length(std::size_t length) {
  Text text;
  if (length == 0) return text;
  text.storage_.reset(allocate_text(length));
  text.size_ = length;
  return text;
}

Text::Text(Text&& other) noexcept : storage_(std::move(other.storage_)), size_(std::exchange(other.size_, 0)) {}

Text& Text::operator=(Text&& other) noexcept {
  storage_ = std::move(other.storage_);
  size_ = std::exchange(other.size_, 0);
  return *this;
}

void Text::keep_first(std::size_t length) {
  if (length == size_) return;
  char16_t* smaller = shrink_text(storage_.get(), length);
  (void)storage_.release();  // already freed or moved
  storage_.reset(smaller);
  size_ = length;
}

char16_t* Text::release() noexcept {
  size_ = 0;
  return storage_.release();
}

}  // namespace corvelle
