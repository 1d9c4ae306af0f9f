#include <utility>

#include "text/text_slot_storage.h"

namespace corvelle {
namespace {

thread_local Text slot;

}  // namespace

std::u16string_view slot_content() noexcept { return slot; }

bool store_in_slot(Text&& content) noexcept {
  slot = std::move(content);
  return true;
}

}  // namespace corvelle
