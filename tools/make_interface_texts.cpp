// tools/make_interface_texts.cpp - writes the interfaces for people's own compilers, from the operation table.
//
//   make_interface_texts HEADER.h INTERFACES.idl
//
// The header is for C++ hosts that call early bound, by any compiler for Windows since C++98. The IDL text is what one
// would have written the type library from. Both are written by the build, beside the DLL.

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "component/automation.h"
#include "component/class_description.h"

namespace corvelle {
namespace {

constexpr std::size_t kColumns = 120;

std::string narrow(std::u16string_view ascii) { return {ascii.begin(), ascii.end()}; }
std::string narrow(const wchar_t* ascii) { return narrow(as_text(ascii)); }

std::string hexadecimal(const char* format, unsigned long number) {
  char digits[16];
  std::snprintf(digits, sizeof digits, format, number);
  return digits;
}

// "FF5764D4-C40E-4A4E-9BC0-7FEC6D6F4AA2"
std::string in_registry_form(const GUID& id) {
  std::string text = hexadecimal("%08lX", id.Data1) + "-" + hexadecimal("%04lX", id.Data2) + "-" +
                     hexadecimal("%04lX", id.Data3) + "-";
  for (std::size_t i = 0; i < 8; ++i) text += (i == 2 ? "-" : "") + hexadecimal("%02lX", id.Data4[i]);
  return text;
}

// "{0xFF5764D4, 0xC40E, 0x4A4E, {0x9B, 0xC0, 0x7F, 0xEC, 0x6D, 0x6F, 0x4A, 0xA2}}"
std::string as_initializer(const GUID& id) {
  std::string text = "{" + hexadecimal("0x%08lX", id.Data1) + ", " + hexadecimal("0x%04lX", id.Data2) + ", " +
                     hexadecimal("0x%04lX", id.Data3) + ", {";
  for (std::size_t i = 0; i < 8; ++i) text += (i == 0 ? "" : ", ") + hexadecimal("0x%02lX", id.Data4[i]);
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

// ---- The header ----

// A default as a C++ literal. Nothing but ASCII, so that every compiler reads it alike, whatever it takes a file for.
std::string cpp_default(const DefaultValue& value) {
  if (value.kind == DefaultValue::Kind::int16) return std::to_string(value.int16);
  std::string literal = "L\"";
  for (const char16_t unit : as_text(value.text)) literal += hexadecimal("\\x%04lX", unit);
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

std::string header_member(const Operation& operation) {
  std::vector<std::string> parameters;
  for (const Parameter& parameter : operation.parameters()) {
    parameters.push_back(std::string(names_of(parameter.value_type()).cpp) + (parameter.by_reference() ? "* " : " ") +
                         narrow(parameter.name));
  }
  if (operation.result != VT_VOID) parameters.push_back(std::string(names_of(operation.result).cpp) + "* result");
  return "  // " + std::string(operation.help) + "\n" + header_defaults(operation) +
         wrapped("  virtual HRESULT STDMETHODCALLTYPE " + narrow(operation.name) + "(", parameters, ") = 0;");
}

std::string header_class(const ClassDescription& description) {
  const std::string name = narrow(description.name);
  const std::string interface_name = narrow(description.interface_name);
  const std::string id = in_registry_form(description.interface_id);
  std::string text = "// " + std::string(narrow(description.help)) + "\n" +                                //
                     "const CLSID CLSID_" + name + " = " + as_initializer(description.class_id) + ";\n" +  //
                     "const IID IID_" + interface_name + " = " + as_initializer(description.interface_id) + ";\n\n" +
                     "MIDL_INTERFACE(\"" + id + "\")\n" + interface_name + " : public IDispatch {\n";
  for (const Operation& operation : description.operations) text += header_member(operation);
  text += "};\n\n// The same members for IDispatch::Invoke.\n";
  for (const Operation& operation : description.operations) {
    text += "const DISPID DISPID_" + name + "_" + narrow(operation.name) + " = " +
            hexadecimal("0x%08lX", static_cast<unsigned long>(operation.dispid)) + ";\n";
  }
  return text + "\n";
}

constexpr const char* kHeaderBeginning =
    R"(// Corvelle.h - the interfaces of Corvelle.dll, for C++ hosts that call them early bound.
//
// Needs the Windows headers and nothing else. In an apartment (CoInitialize):
//
//   _ClsValidate* validate = NULL;
//   HRESULT result = CoCreateInstance(CLSID_ClsValidate, NULL, CLSCTX_INPROC_SERVER, IID__ClsValidate,
//                                     reinterpret_cast<void**>(&validate));
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
struct Database;

)";

std::string header_text() {
  std::string text = kHeaderBeginning;
  text += "const IID LIBID_Corvelle = " + as_initializer(kLibraryId) + ";\n\n";
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

std::string utf8(std::u16string_view text) {
  std::string result(text.size() * 3, '\0');
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, reinterpret_cast<const wchar_t*>(text.data()), static_cast<int>(text.size()),
                          result.data(), static_cast<int>(result.size()), nullptr, nullptr);
  result.resize(static_cast<std::size_t>(length));
  return result;
}

std::string idl_default(const DefaultValue& value) {
  if (value.kind == DefaultValue::Kind::int16) return std::to_string(value.int16);
  return "\"" + utf8(as_text(value.text)) + "\"";
}

std::string idl_parameter(const Parameter& parameter) {
  std::string attributes = parameter.by_reference() ? "in, out" : "in";
  if (parameter.optional()) attributes += ", optional, defaultvalue(" + idl_default(parameter.default_value) + ")";
  return "[" + attributes + "] " + names_of(parameter.value_type()).idl + (parameter.by_reference() ? "* " : " ") +
         narrow(parameter.name);
}

std::string idl_member(const Operation& operation) {
  std::vector<std::string> parameters;
  for (const Parameter& parameter : operation.parameters()) parameters.push_back(idl_parameter(parameter));
  if (operation.result != VT_VOID) {
    parameters.push_back("[out, retval] " + std::string(names_of(operation.result).idl) + "* result");
  }
  return "    [id(" + hexadecimal("0x%08lX", static_cast<unsigned long>(operation.dispid)) + "), helpstring(\"" +
         std::string(operation.help) + "\")]\n" +
         wrapped("    HRESULT " + narrow(operation.name) + "(", parameters, ");");
}

std::string idl_version() {
  return "version(" + std::to_string(kLibraryMajor) + "." + std::to_string(kLibraryMinor) + ")";
}

std::string idl_class(const ClassDescription& description) {
  std::string text = "  [odl, uuid(" + in_registry_form(description.interface_id) + "), " + idl_version() +
                     ", hidden, dual, nonextensible, oleautomation]\n" +  //
                     "  interface " + narrow(description.interface_name) + " : IDispatch {\n";
  for (const Operation& operation : description.operations) text += idl_member(operation);
  return text + "  }\n\n  [uuid(" + in_registry_form(description.class_id) + "), " + idl_version() + ", helpstring(\"" +
         narrow(description.help) + "\")]\n" +  //
         "  coclass " + narrow(description.name) + " {\n    [default] interface " + narrow(description.interface_name) +
         ";\n  }\n";
}

std::string idl_text() {
  std::string text =
      "// Corvelle.idl - the interfaces of Corvelle.dll as its type library describes them. In UTF-8.\n"
      "//\n"
      "// dao350.dll is Data Access Objects 3.5, where Database comes from.\n"
      "// Written by the build of Corvelle.dll; changes belong into its operation table.\n";
  text += "import \"oaidl.idl\";\n\n[uuid(" + in_registry_form(kLibraryId) + "), " + idl_version() +
          ", lcid(0), helpstring(\"" + narrow(kLibraryHelp) + "\")]\nlibrary " + narrow(kLibraryName) + " {\n" +
          "  importlib(\"stdole2.tlb\");\n  importlib(\"dao350.dll\");\n";
  for (const ClassDescription* description : kClasses) text += "\n" + idl_class(*description);
  return text + "}\n";
}

// Lines end as files of Windows do. Whether all of it could be written.
bool write(const wchar_t* path, const std::string& text) {
  FILE* file = _wfopen(path, L"w");
  if (file == nullptr) return false;
  const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
  return std::fclose(file) == 0 && written;
}

}  // namespace
}  // namespace corvelle

int wmain(int count, wchar_t** arguments) {
  if (count != 3) {
    std::fputs("usage: make_interface_texts HEADER.h INTERFACES.idl\n", stderr);
    return 2;
  }
  if (!corvelle::write(arguments[1], corvelle::header_text()) || !corvelle::write(arguments[2], corvelle::idl_text())) {
    std::fputs("make_interface_texts: cannot write the files\n", stderr);
    return 1;
  }
  return 0;
}
