#include "text/text_slot.h"

#include "text/text_slot_storage.h"

namespace corvelle {

void Set_Str(std::u16string_view StrNo) { store_in_slot(Text(StrNo)); }

Text Get_Str() { return Text(slot_content()); }

}  // namespace corvelle
