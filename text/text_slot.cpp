#include "text/text_slot.h"

#include <utility>

#include "text/text_slot_storage.h"

namespace corvelle {

Error Set_Str(std::u16string_view StrNo) {
  Text content(StrNo);
  return !content.failed() && store_in_slot(std::move(content)) ? Error() : out_of_memory();
}

Result<Text> Get_Str() { return Text(slot_content()); }

}  // namespace corvelle
