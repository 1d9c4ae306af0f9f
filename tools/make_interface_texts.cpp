// tools/make_interface_texts.cpp - writes the interfaces for people's own compilers, from the operation table.
//
//   make_interface_texts FOLDER OWN_FOLDER
//
// FOLDER, where the DLL is, gets Corvelle.h for C and C++ hosts that call early bound, by any compiler for Windows
// since C++98, and Corvelle.idl. OWN_FOLDER gets the two IDL texts that make_type_library.py makes the type libraries
// from.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "component/class_description.h"
#include "tests/support/utf8.h"
#include "tools/generated_text.h"

namespace corvelle {
namespace {

constexpr std::size_t kColumns = 120;

// "{0xFF5764D4, 0xC40E, 0x4A4E, {0x9B, 0xC0, 0x7F, 0xEC, 0x6D, 0x6F, 0x4A, 0xA2}}"
std::string as_initializer(const GUID& id) {
  std::string text = "{" + hexadecimal("0x%08X", id.Data1) + ", " + hexadecimal("0x%04X", id.Data2) + ", " +
                     hexadecimal("0x%04X", id.Data3) + ", {";
  for (std::size_t i = 0; i < 8; ++i) text += (i == 0 ? "" : ", ") + hexadecimal("0x%02X", id.Data4[i]);
  return text + "}}";
}

// `head`, the parts with commas between them, and `tail`, on lines of at most kColumns where the parts allow it.
std::string wrapped(const std::string& head, const std::vector<std::string>& parts, const std::string& tail) {
  std::string text;
  std::string line = head;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string part = parts[i] + (i + 1 < parts.size() ? ", " : tail);
    if (line.size() + part.size() > kColumns && i > 0) {
      text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
      line = std::string(head.find_first_not_of(' ') + 4, ' ');
    }
    line += part;
  }
  return text + line + "\n";
}

// What the two languages call automation's types.
struct TypeNames {
  VARTYPE type;
  const char* cpp;
  const char* idl;
};
constexpr TypeNames kTypes[] = {
    {VT_BSTR, "BSTR", "BSTR"},
    {VT_I2, "SHORT", "short"},
    {VT_I4, "LONG", "long"},
    {VT_R8, "double", "double"},
    {VT_DATE, "DATE", "DATE"},
    {VT_BOOL, "VARIANT_BOOL", "VARIANT_BOOL"},
    {VT_VARIANT, "VARIANT", "VARIANT"},
    {kDatabaseType, "Database*", "Database*"},
};

const TypeNames& names_of(VARTYPE type) {
  for (const TypeNames& names : kTypes) {
    if (names.type == type) return names;
  }
  std::fprintf(stderr, "make_interface_texts: no name for the type %u\n", static_cast<unsigned>(type));
  std::exit(1);
}

std::u16string_view text_of(const DefaultValue& value) { return reinterpret_cast<const char16_t*>(value.text); }

// ---- The header ----

// A default as a C++ literal. Nothing but ASCII, so that every compiler reads it alike, whatever it takes a file for.
std::string cpp_default(const DefaultValue& value) {
  if (value.kind == DefaultValue::Kind::int16) return std::to_string(value.int16);
  std::string literal = "L\"";
  for (const char16_t unit : text_of(value)) literal += hexadecimal("\\x%04X", unit);
  return literal + "\"";
}

std::string header_defaults(const Operation& operation) {
  std::string defaults;
  for (const Parameter& parameter : operation.parameters()) {
    if (!parameter.optional()) continue;
    defaults += (defaults.empty() ? "" : ", ") + narrow(parameter.name) + " = " + cpp_default(parameter.default_value);
  }
  return defaults.empty() ? "" : "  // Left out by a script: " + defaults + ".\n";
}

std::vector<std::string> header_parameters(const Operation& operation) {
  std::vector<std::string> parameters;
  for (const Parameter& parameter : operation.parameters()) {
    parameters.push_back(std::string(names_of(parameter.value_type()).cpp) + (parameter.by_reference() ? "* " : " ") +
                         narrow(parameter.name));
  }
  if (operation.result != VT_VOID) parameters.push_back(std::string(names_of(operation.result).cpp) + "* result");
  return parameters;
}

std::string cpp_member(const Operation& operation) {
  return "  // " + std::string(operation.help) + "\n" + header_defaults(operation) +
         wrapped("  virtual HRESULT STDMETHODCALLTYPE " + narrow(operation.name) + "(", header_parameters(operation),
                 ") = 0;");
}

std::string cpp_interface(const ClassDescription& description) {
  std::string text = "MIDL_INTERFACE(\"" + in_registry_form(description.interface_id) + "\")\n" +
                     narrow(description.interface_name) + " : public IDispatch {\n";
  for (const Operation& operation : description.operations) text += cpp_member(operation);
  return text + "};\n";
}

std::string c_member(const std::string& interface_name, const std::string& result, const std::string& name,
                     std::vector<std::string> parameters) {
  parameters.insert(parameters.begin(), interface_name + "* self");
  return wrapped("  " + result + "(STDMETHODCALLTYPE* " + name + ")(", parameters, ");");
}

// The members that every dual interface begins with.
struct InheritedMember {
  const char* result;
  const char* name;
  std::vector<std::string> parameters;
};
const std::vector<InheritedMember>& inherited_members() {
  static const std::vector<InheritedMember> members = {
      {"HRESULT", "QueryInterface", {"REFIID id", "void** object"}},
      {"ULONG", "AddRef", {}},
      {"ULONG", "Release", {}},
      {"HRESULT", "GetTypeInfoCount", {"UINT* count"}},
      {"HRESULT", "GetTypeInfo", {"UINT index", "LCID locale", "ITypeInfo** type"}},
      {"HRESULT", "GetIDsOfNames", {"REFIID reserved", "LPOLESTR* names", "UINT count", "LCID locale", "DISPID* ids"}},
      {"HRESULT",
       "Invoke",
       {"DISPID id", "REFIID reserved", "LCID locale", "WORD flags", "DISPPARAMS* parameters", "VARIANT* result",
        "EXCEPINFO* exception", "UINT* wrong_argument"}},
  };
  return members;
}

std::string c_interface(const ClassDescription& description) {
  const std::string name = narrow(description.interface_name);
  std::string text = "typedef struct " + name + " " + name + ";\ntypedef struct " + name + "Vtbl {\n";
  for (const InheritedMember& member : inherited_members()) {
    text += c_member(name, member.result, member.name, member.parameters);
  }
  for (const Operation& operation : description.operations) {
    text += c_member(name, "HRESULT", narrow(operation.name), header_parameters(operation));
  }
  return text + "} " + name + "Vtbl;\nstruct " + name + " {\n  const " + name + "Vtbl* lpVtbl;\n};\n";
}

std::string header_class(const ClassDescription& description) {
  const std::string name = narrow(description.name);
  std::string text = "// " + narrow(description.help) + "\n" +  //
                     "static const CLSID CLSID_" + name + " = " + as_initializer(description.class_id) + ";\n" +
                     "static const IID IID_" + narrow(description.interface_name) + " = " +
                     as_initializer(description.interface_id) + ";\n\n#ifdef __cplusplus\n" +
                     cpp_interface(description) + "#else\n" + c_interface(description) +
                     "#endif\n\n// The same members for IDispatch::Invoke.\n";
  for (const Operation& operation : description.operations) {
    text += "static const DISPID DISPID_" + name + "_" + narrow(operation.name) + " = " +
            hexadecimal("0x%08X", static_cast<unsigned>(operation.dispid)) + ";\n";
  }
  return text + "\n";
}

constexpr const char* kHeaderBeginning =
    R"(// Corvelle.h - the interfaces of Corvelle.dll, for C++ and C hosts that call them early bound.
//
// Needs the Windows headers and nothing else. In an apartment (CoInitialize):
//
//   _ClsValidate* validate = NULL;
//   HRESULT result = CoCreateInstance(CLSID_ClsValidate, NULL, CLSCTX_INPROC_SERVER, IID__ClsValidate,
//                                     reinterpret_cast<void**>(&validate));
//
// and in C: &CLSID_ClsValidate, &IID__ClsValidate, (void**)&validate, and a member of an object by
// validate->lpVtbl->GetByte_Pf(validate, text, 0, &width).
//
// A member that fails returns 0x800A0000 plus the error's number, or the system's or the host object's own code, and
// leaves a description for GetErrorInfo. A text is a BSTR, and a null one is empty; the caller frees results. The host
// passes every argument, those with a default too. The order of the members never changes.
//
// Written by the build of Corvelle.dll; changes belong into its operation table.
#pragma once

#include <windows.h>

#include <oaidl.h>

// The host's Data Access Objects database, or any object that answers for the interface's IID and has the members by
// name: pass a pointer to that interface as this type.
typedef struct Database Database;

)";

std::string header_text() {
  std::string text = kHeaderBeginning;
  text += "static const IID LIBID_Corvelle = " + as_initializer(kLibraryId) + ";\n\n";
  for (const ClassDescription* description : kClasses) text += header_class(*description);
  // What makes __uuidof work with mingw's compiler; others have it from MIDL_INTERFACE.
  text += "#ifdef __CRT_UUID_DECL\n";
  for (const ClassDescription* description : kClasses) {
    const std::string id = as_initializer(description->interface_id);
    text += "__CRT_UUID_DECL(" + narrow(description->interface_name) + ", ";
    for (const char unit : id) {
      if (unit != '{' && unit != '}') text += unit;
    }
    text += ")\n";
  }
  return text + "#endif\n";
}

// ---- The IDL text ----

// The texts differ in what their compilers take.
struct Dialect {
  enum class ReferredText : std::uint8_t { optional, without_default, by_value };
  ReferredText referred_text;   // how a text by reference with a default is declared
  bool database_is_any_object;  // so that the text refers to automation's own library alone
};
constexpr Dialect kShipped = {Dialect::ReferredText::optional, false};
constexpr Dialect kShippedToWidl = {Dialect::ReferredText::without_default, false};
// From these the build makes the type libraries; make_type_library.py puts right what stands in them by value.
constexpr Dialect kOwn = {Dialect::ReferredText::by_value, false};
constexpr Dialect kOwnSelfContained = {Dialect::ReferredText::by_value, true};

std::string idl_default(const DefaultValue& value) {
  if (value.kind == DefaultValue::Kind::int16) return std::to_string(value.int16);
  return "\"" + testing::utf8(text_of(value)) + "\"";
}

bool is_referred_text_with_default(const Parameter& parameter) {
  return parameter.by_reference() && parameter.default_value.kind == DefaultValue::Kind::text;
}

std::string idl_parameter(const Parameter& parameter, const Dialect& dialect) {
  using ReferredText = Dialect::ReferredText;
  const ReferredText treatment =
      is_referred_text_with_default(parameter) ? dialect.referred_text : ReferredText::optional;
  const bool by_reference = parameter.by_reference() && treatment != ReferredText::by_value;
  std::string attributes = by_reference ? "in, out" : "in";
  if (parameter.optional()) attributes += ", optional";
  if (parameter.optional() && treatment != ReferredText::without_default) {
    attributes += ", defaultvalue(" + idl_default(parameter.default_value) + ")";
  }
  const bool any_object = parameter.value_type() == kDatabaseType && dialect.database_is_any_object;
  return "[" + attributes + "] " + (any_object ? "IDispatch*" : names_of(parameter.value_type()).idl) +
         (by_reference ? "* " : " ") + narrow(parameter.name);
}

std::string idl_declaration(const Operation& operation, const Dialect& dialect) {
  std::vector<std::string> parameters;
  for (const Parameter& parameter : operation.parameters()) parameters.push_back(idl_parameter(parameter, dialect));
  if (operation.result != VT_VOID) {
    parameters.push_back("[out, retval] " + std::string(names_of(operation.result).idl) + "* result");
  }
  return wrapped("    HRESULT " + narrow(operation.name) + "(", parameters, ");");
}

std::string idl_member(const Operation& operation, const Dialect& dialect) {
  std::string text = "    [id(" + hexadecimal("0x%08X", static_cast<unsigned>(operation.dispid)) + "), helpstring(\"" +
                     std::string(operation.help) + "\")]\n";
  const bool needs_two = dialect.referred_text == Dialect::ReferredText::optional &&
                         std::ranges::any_of(operation.parameters(), is_referred_text_with_default);
  if (!needs_two) return text + idl_declaration(operation, dialect);
  return text + "#ifdef __WIDL__\n" + idl_declaration(operation, kShippedToWidl) + "#else\n" +
         idl_declaration(operation, dialect) + "#endif\n";
}

std::string idl_version() {
  return "version(" + std::to_string(kLibraryMajor) + "." + std::to_string(kLibraryMinor) + ")";
}

std::string idl_class(const ClassDescription& description, const Dialect& dialect) {
  std::string text = "  [odl, uuid(" + in_registry_form(description.interface_id) + "), " + idl_version() +
                     ", hidden, dual, nonextensible, oleautomation]\n" +  //
                     "  interface " + narrow(description.interface_name) + " : IDispatch {\n";
  for (const Operation& operation : description.operations) text += idl_member(operation, dialect);
  return text + "  }\n\n  [uuid(" + in_registry_form(description.class_id) + "), " + idl_version() + ", helpstring(\"" +
         narrow(description.help) + "\")]\n" +  //
         "  coclass " + narrow(description.name) + " {\n    [default] interface " + narrow(description.interface_name) +
         ";\n  }\n";
}

std::string idl_library(const Dialect& dialect) {
  std::string text = "[uuid(" + in_registry_form(kLibraryId) + "), " + idl_version() + ", lcid(0), helpstring(\"" +
                     narrow(kLibraryHelp) + "\")]\nlibrary " + narrow(kLibraryName) +
                     " {\n  importlib(\"stdole2.tlb\");\n";
  if (!dialect.database_is_any_object) text += "  importlib(\"dao350.dll\");\n";
  for (const ClassDescription* description : kClasses) text += "\n" + idl_class(*description, dialect);
  return text + "}\n";
}

constexpr const char* kIdlBeginning =
    R"(// Corvelle.idl - the interfaces of Corvelle.dll as its type library describes them. In UTF-8.
//
// dao350.dll is Data Access Objects 3.5, where Database comes from.
// The default of strFmt is lost where WIDL compiles this: it refuses one for a text by reference, which others take.
// Written by the build of Corvelle.dll; changes belong into its operation table.
import "oaidl.idl";

#ifdef __WIDL__
interface Database;  // or the name would be unknown to it
#endif

)";

std::string shipped_idl() { return kIdlBeginning + idl_library(kShipped); }

std::string own_idl(const Dialect& dialect) {
  const std::string beginning = "import \"oaidl.idl\";\n\n";
  return beginning + (dialect.database_is_any_object ? "" : "interface Database;\n\n") + idl_library(dialect);
}

// Lines end as files of Windows do.
std::string with_line_ends_of_windows(const std::string& text) {
  std::string result;
  for (const char unit : text) result += unit == '\n' ? std::string("\r\n") : std::string(1, unit);
  return result;
}

bool write_all(const std::string& shipped, const std::string& own) {
  return write(shipped + "/Corvelle.h", with_line_ends_of_windows(header_text())) &&
         write(shipped + "/Corvelle.idl", with_line_ends_of_windows(shipped_idl())) &&
         write(own + "/Corvelle.idl", own_idl(kOwn)) &&
         write(own + "/Corvelle_self_contained.idl", own_idl(kOwnSelfContained));
}

}  // namespace
}  // namespace corvelle

int main(int count, char** arguments) {
  if (count != 3) {
    std::fputs("usage: make_interface_texts FOLDER OWN_FOLDER\n", stderr);
    return 2;
  }
  const bool written = corvelle::write_all(arguments[1], arguments[2]);
  if (!written) std::fputs("make_interface_texts: cannot write the files\n", stderr);
  return written ? 0 : 1;
}
