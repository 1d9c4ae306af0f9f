// 32-bit hosts call with a stack that is aligned to 4 bytes only.
#include <gtest/gtest.h>

#include "tests/component/host.h"

namespace corvelle::testing {
namespace {

#ifndef _WIN64

// Calls object->GetByte_Pf(text, 0, result) with the stack `offset` bytes below a 16-byte boundary.
__attribute__((naked)) HRESULT call_misaligned(void* /*object*/, void* /*function*/, BSTR /*text*/, SHORT* /*result*/,
                                               int /*offset*/) {
  asm("pushl %ebp\n\t"
      "movl %esp, %ebp\n\t"
      "andl $-16, %esp\n\t"
      "subl 24(%ebp), %esp\n\t"
      "pushl 20(%ebp)\n\t"
      "pushl $0\n\t"
      "pushl 16(%ebp)\n\t"
      "pushl 8(%ebp)\n\t"
      "call *12(%ebp)\n\t"
      "movl %ebp, %esp\n\t"
      "popl %ebp\n\t"
      "ret\n\t");
}

TEST(StackAlignment, EntryPointsTakeAnyMultipleOfFour) {
  const Apartment apartment;
  const auto validate = create_validate();
  void* const* vtable = *reinterpret_cast<void* const* const*>(validate.Get());
  void* get_byte = vtable[7 + 1];
  const ScopedBstr text(std::u16string(300, u'中'));  // long enough for the vector code
  for (const int offset : {0, 4, 8, 12}) {
    SHORT width = 0;
    EXPECT_EQ(call_misaligned(validate.Get(), get_byte, text.get(), &width, offset), S_OK);
    EXPECT_EQ(width, 600) << "stack off by " << offset;
  }
}

#endif

}  // namespace
}  // namespace corvelle::testing
