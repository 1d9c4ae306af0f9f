// tests/support/loaded_image.h - the headers and tables of a module in memory, as the system's linker left them.
#pragma once

#include <windows.h>

#include <span>
#include <string>
#include <vector>

namespace corvelle::testing {

// One imported function, and where the module keeps its address.
struct Import {
  std::string library;
  std::string function;
  ULONG_PTR* address;
};

class LoadedImage {
 public:
  explicit LoadedImage(HMODULE module) : base_(reinterpret_cast<const BYTE*>(module)) {}

  const IMAGE_NT_HEADERS& headers() const {
    return *at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
  }

  std::vector<std::string> exports() const {
    const auto* directory = at<IMAGE_EXPORT_DIRECTORY>(directory_at(IMAGE_DIRECTORY_ENTRY_EXPORT));
    std::vector<std::string> names;
    for (const DWORD name : std::span(at<DWORD>(directory->AddressOfNames), directory->NumberOfNames)) {
      names.emplace_back(at<char>(name));
    }
    return names;
  }
  // Exports without a name count here, too.
  DWORD export_count() const {
    return at<IMAGE_EXPORT_DIRECTORY>(directory_at(IMAGE_DIRECTORY_ENTRY_EXPORT))->NumberOfFunctions;
  }

  // In the image's own order. A function that is imported by its number is called "#number".
  std::vector<Import> imports() const {
    std::vector<Import> found;
    const auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(directory_at(IMAGE_DIRECTORY_ENTRY_IMPORT));
    for (; library->Name != 0; ++library) {
      const auto* name = at<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
      const auto* address = at<IMAGE_THUNK_DATA>(library->FirstThunk);
      for (; name->u1.AddressOfData != 0; ++name, ++address) {
        const std::string function = IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)
                                         ? "#" + std::to_string(IMAGE_ORDINAL(name->u1.Ordinal))
                                         : at<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(name->u1.AddressOfData))->Name;
        found.push_back(
            {at<char>(library->Name), function, reinterpret_cast<ULONG_PTR*>(const_cast<IMAGE_THUNK_DATA*>(address))});
      }
    }
    return found;
  }

 private:
  template <class Type>
  const Type* at(DWORD offset) const {
    return reinterpret_cast<const Type*>(base_ + offset);
  }
  DWORD directory_at(unsigned index) const { return headers().OptionalHeader.DataDirectory[index].VirtualAddress; }

  const BYTE* base_;
};

// Makes `module` call `replacement` instead of the imported `function`, until it is destroyed.
class ReplacedImport {
 public:
  ReplacedImport(HMODULE module, const std::string& function, void* replacement) {
    for (const Import& import : LoadedImage(module).imports()) {
      if (import.function == function) address_ = import.address;
    }
    if (address_ != nullptr) original_ = exchange(reinterpret_cast<ULONG_PTR>(replacement));
  }
  ~ReplacedImport() {
    if (address_ != nullptr) exchange(original_);
  }
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

  bool found() const { return address_ != nullptr; }

 private:
  ULONG_PTR exchange(ULONG_PTR value) {
    DWORD protection = 0;
    VirtualProtect(address_, sizeof(*address_), PAGE_READWRITE, &protection);
    const ULONG_PTR before = *address_;
    *address_ = value;
    VirtualProtect(address_, sizeof(*address_), protection, &protection);
    return before;
  }

  ULONG_PTR* address_ = nullptr;
  ULONG_PTR original_ = 0;
};

}  // namespace corvelle::testing
