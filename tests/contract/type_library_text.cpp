#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <sstream>
#include <stdexcept>
#include <vector>

#include "component/automation.h"
#include "tests/contract/contract_text.h"

namespace corvelle::testing {
namespace {

using Microsoft::WRL::ComPtr;

void check(HRESULT result, const char* step) {
  if (SUCCEEDED(result)) return;
  std::ostringstream message;
  message << step << " failed: 0x" << std::hex << static_cast<unsigned long>(result);
  throw std::runtime_error(message.str());
}

std::wstring wide(BSTR text) { return {text, SysStringLen(text)}; }
std::string shown(BSTR text) { return utf8(wide(text)); }

std::string shown(const GUID& id) {
  wchar_t text[39] = {};
  StringFromGUID2(id, text, 39);
  return utf8(text);
}

std::string shown(WORD major, WORD minor) { return std::to_string(major) + "." + std::to_string(minor); }

struct FlagName {
  unsigned flag;
  const char* name;
};

// The names of the flags that are set; a flag without a name shows as its number.
template <std::size_t Count>
std::string flags_shown(unsigned flags, const FlagName (&names)[Count]) {
  std::string text;
  for (const FlagName& known : names) {
    if ((flags & known.flag) != 0) text += std::string(" ") + known.name;
    flags &= ~known.flag;
  }
  return flags == 0 ? text : text + " " + std::to_string(flags);
}

std::string type_flags(unsigned flags) {
  static constexpr FlagName kNames[] = {{TYPEFLAG_FHIDDEN, "hidden"},
                                        {TYPEFLAG_FDUAL, "dual"},
                                        {TYPEFLAG_FNONEXTENSIBLE, "nonextensible"},
                                        {TYPEFLAG_FOLEAUTOMATION, "oleautomation"},
                                        {TYPEFLAG_FDISPATCHABLE, "dispatchable"},
                                        {TYPEFLAG_FCANCREATE, "creatable"}};
  return flags_shown(flags, kNames);
}

std::string parameter_flags(unsigned flags) {
  static constexpr FlagName kNames[] = {
      {PARAMFLAG_FIN, "in"}, {PARAMFLAG_FOUT, "out"}, {PARAMFLAG_FRETVAL, "retval"}, {PARAMFLAG_FOPT, "optional"}};
  return flags_shown(flags & ~static_cast<unsigned>(PARAMFLAG_FHASDEFAULT), kNames);
}

// The name and help text of a type or of one of its members.
struct Document {
  std::string name;
  std::string help;
};
Document document_of(ITypeInfo* type, MEMBERID member) {
  ScopedBstr name;
  ScopedBstr help;
  check(type->GetDocumentation(member, name.receive(), help.receive(), nullptr, nullptr), "GetDocumentation");
  return {shown(name.get()), shown(help.get())};
}
Document document_of(ITypeLib* library) {
  ScopedBstr name;
  ScopedBstr help;
  check(library->GetDocumentation(-1, name.receive(), help.receive(), nullptr, nullptr), "GetDocumentation");
  return {shown(name.get()), shown(help.get())};
}

std::string system_shown(SYSKIND system) {
  constexpr SYSKIND kThisSystem = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
  return system == kThisSystem ? "<system>" : "system " + std::to_string(system);
}

std::string library_shown(ITypeLib* library) {
  TLIBATTR* attributes = nullptr;
  check(library->GetLibAttr(&attributes), "GetLibAttr");
  const std::string text = shown(attributes->guid) + " " + shown(attributes->wMajorVerNum, attributes->wMinorVerNum) +
                           " locale " + std::to_string(attributes->lcid) + " " + system_shown(attributes->syskind);
  library->ReleaseTLibAttr(attributes);
  return document_of(library).name + " " + text;
}

// A type of another library shows with its interface and library, whatever it is called there.
std::string referred_type(ITypeInfo* type, HREFTYPE reference) {
  ComPtr<ITypeInfo> referred;
  check(type->GetRefTypeInfo(reference, &referred), "GetRefTypeInfo");
  ComPtr<ITypeLib> library;
  UINT index = 0;
  check(referred->GetContainingTypeLib(&library, &index), "GetContainingTypeLib");
  TLIBATTR* library_attributes = nullptr;
  TYPEATTR* attributes = nullptr;
  check(library->GetLibAttr(&library_attributes), "GetLibAttr");
  check(referred->GetTypeAttr(&attributes), "GetTypeAttr");
  const std::string text = shown(attributes->guid) + " of library " + shown(library_attributes->guid) + " " +
                           shown(library_attributes->wMajorVerNum, library_attributes->wMinorVerNum);
  referred->ReleaseTypeAttr(attributes);
  library->ReleaseTLibAttr(library_attributes);
  return text;
}

std::string type_shown(ITypeInfo* type, const TYPEDESC& description) {
  switch (description.vt) {
    case VT_PTR: return type_shown(type, *description.lptdesc) + "*";
    case VT_USERDEFINED: return "<" + referred_type(type, description.hreftype) + ">";
    case VT_BSTR: return "string";
    case VT_I2: return "int16";
    case VT_I4: return "int32";
    case VT_R8: return "double";
    case VT_DATE: return "date";
    case VT_BOOL: return "boolean";
    case VT_VARIANT: return "variant";
    case VT_DISPATCH: return "object";
    case VT_HRESULT: return "HRESULT";
    case VT_VOID: return "void";
    default: return "type " + std::to_string(description.vt);
  }
}

std::string default_shown(const PARAMDESC& parameter) {
  if ((parameter.wParamFlags & PARAMFLAG_FHASDEFAULT) == 0) return "";
  const VARIANT& value = parameter.pparamdescex->varDefaultValue;
  if (V_VT(&value) == VT_BSTR) return " = " + quoted(wide(V_BSTR(&value)));
  if (V_VT(&value) == VT_I2) return " = " + std::to_string(V_I2(&value));
  return " = a value of type " + std::to_string(V_VT(&value));
}

std::string function_shown(ITypeInfo* type, const FUNCDESC& function) {
  std::vector<BSTR> names(1 + static_cast<std::size_t>(function.cParams));
  UINT named = 0;
  check(type->GetNames(function.memid, names.data(), static_cast<UINT>(names.size()), &named), "GetNames");
  std::ostringstream text;
  text << "  slot " << function.oVft / static_cast<int>(sizeof(void*));
  if (function.oVft % static_cast<int>(sizeof(void*)) != 0) text << " (misaligned)";
  text << "  " << std::hex << std::uppercase << function.memid << std::dec << "  "
       << type_shown(type, function.elemdescFunc.tdesc) << " " << shown(names[0]) << "(";
  for (SHORT i = 0; i < function.cParams; ++i) {
    const ELEMDESC& parameter = function.lprgelemdescParam[i];
    const UINT name = static_cast<UINT>(i) + 1;
    text << (i > 0 ? "," : "") << "\n      [" << parameter_flags(parameter.paramdesc.wParamFlags).substr(1) << "] "
         << type_shown(type, parameter.tdesc) << (name < named ? " " + shown(names[name]) : "")
         << default_shown(parameter.paramdesc);
  }
  text << ")";
  if (function.invkind != INVOKE_FUNC || function.funckind != FUNC_PUREVIRTUAL || function.callconv != CC_STDCALL) {
    text << " of invocation kind " << function.invkind << ", function kind " << function.funckind << ", convention "
         << function.callconv;
  }
  for (UINT i = 0; i < named; ++i) SysFreeString(names[i]);
  return text.str() + "\n      " + document_of(type, function.memid).help + "\n";
}

std::string functions_shown(ITypeInfo* type, const TYPEATTR& attributes) {
  std::string lines;
  for (UINT index = 0; index < attributes.cFuncs; ++index) {
    FUNCDESC* function = nullptr;
    check(type->GetFuncDesc(index, &function), "GetFuncDesc");
    lines += function_shown(type, *function);
    type->ReleaseFuncDesc(function);
  }
  return lines;
}

std::string implemented_shown(ITypeInfo* type, const TYPEATTR& attributes) {
  static constexpr FlagName kNames[] = {
      {IMPLTYPEFLAG_FDEFAULT, "default"}, {IMPLTYPEFLAG_FSOURCE, "source"}, {IMPLTYPEFLAG_FRESTRICTED, "restricted"}};
  std::string lines;
  for (UINT index = 0; index < attributes.cImplTypes; ++index) {
    HREFTYPE reference = 0;
    INT flags = 0;
    check(type->GetRefTypeOfImplType(index, &reference), "GetRefTypeOfImplType");
    check(type->GetImplTypeFlags(index, &flags), "GetImplTypeFlags");
    lines += "  implements" + flags_shown(static_cast<unsigned>(flags), kNames) + " " + referred_type(type, reference) +
             "\n";
  }
  return lines;
}

// The vtable's side of a dual interface, any other type itself.
ComPtr<ITypeInfo> vtable_side(ITypeInfo* type) {
  HREFTYPE reference = 0;
  ComPtr<ITypeInfo> side = type;
  if (type->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference) == S_OK) {
    check(type->GetRefTypeInfo(reference, side.ReleaseAndGetAddressOf()), "the vtable's side of an interface");
  }
  return side;
}

std::string type_info_shown(ITypeInfo* published) {
  const ComPtr<ITypeInfo> type = vtable_side(published);
  TYPEATTR* attributes = nullptr;
  check(type->GetTypeAttr(&attributes), "GetTypeAttr");
  const Document document = document_of(type.Get(), MEMBERID_NIL);
  const char* kind = attributes->typekind == TKIND_COCLASS ? "class" : "interface";
  std::string lines = std::string(kind) + " " + document.name + " " + shown(attributes->guid) + " " +
                      shown(attributes->wMajorVerNum, attributes->wMinorVerNum) + type_flags(attributes->wTypeFlags) +
                      "\n";
  if (!document.help.empty()) lines += "      " + document.help + "\n";
  lines += implemented_shown(type.Get(), *attributes) + functions_shown(type.Get(), *attributes);
  type->ReleaseTypeAttr(attributes);
  return lines;
}

}  // namespace

std::string type_library_text(const std::wstring& dll) {
  ComPtr<ITypeLib> library;
  check(LoadTypeLibEx(dll.c_str(), REGKIND_NONE, &library), "loading the embedded type library");
  std::string lines = "library " + library_shown(library.Get()) + "\n      " + document_of(library.Get()).help + "\n";
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    ComPtr<ITypeInfo> type;
    check(library->GetTypeInfo(index, &type), "GetTypeInfo");
    lines += type_info_shown(type.Get());
  }
  return lines;
}

}  // namespace corvelle::testing
