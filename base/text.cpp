#include "base/text.h"

#include <algorithm>
#include <utility>

#include "base/text_storage.h"

namespace corvelle {

Text::Text(std::u16string_view content) noexcept {
  if (!content.empty()) *this = owning(copy_text(content), content.size());
}

Text Text::of_length(std::size_t length) noexcept {
  return length == 0 ? Text() : owning(allocate_text(length), length);
}

Text Text::owning(char16_t* storage, std::size_t length) noexcept {
  Text text;
  text.storage_.reset(storage);
  text.size_ = storage != nullptr ? length : kFailed;
  return text;
}

Text::Text(Text&& other) noexcept : storage_(std::move(other.storage_)), size_(std::exchange(other.size_, 0)) {}

Text& Text::operator=(Text&& other) noexcept {
  storage_ = std::move(other.storage_);
  size_ = std::exchange(other.size_, 0);
  return *this;
}

void Text::keep_first(std::size_t length) noexcept {
  if (length == size()) return;
  char16_t* smaller = shrink_text(storage_.get(), length);
  if (smaller == nullptr) {
    storage_.reset();
    size_ = kFailed;
    return;
  }
  (void)storage_.release();  // already freed or moved
  storage_.reset(smaller);
  size_ = length;
}

char16_t* Text::release() noexcept {
  size_ = 0;
  return storage_.release();
}

Text joined(std::span<const std::u16string_view> pieces) noexcept {
  std::size_t length = 0;
  for (const std::u16string_view piece : pieces) length += piece.size();
  Text result = Text::of_length(length);
  if (result.failed()) return result;
  char16_t* end = result.data();
  for (const std::u16string_view piece : pieces) end = std::copy(piece.begin(), piece.end(), end);
  return result;
}

}  // namespace corvelle
