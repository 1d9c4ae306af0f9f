// tests/automation/include/windows.h - the system's plain types and answers, as far as the component uses them.
//
// The headers of this folder stand in for the system's where the component's code is compiled for another machine.
#pragma once

#include <cstddef>
#include <cstdint>

#include "tests/automation/include/guiddef.h"

using BOOL = int;
using BYTE = std::uint8_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using ULONG_PTR = std::uintptr_t;
using LCID = DWORD;
using HRESULT = std::int32_t;
using LPVOID = void*;

using OLECHAR = wchar_t;  // of 16 bits, by -fshort-wchar
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using LPWSTR = wchar_t*;
using LPCWSTR = const wchar_t*;
using HMODULE = struct Module*;

#define STDMETHODCALLTYPE
#define STDAPICALLTYPE
#define STDMETHODIMP HRESULT
#define STDMETHODIMP_(type) type

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;
inline constexpr std::size_t MAX_PATH = 260;
inline constexpr LCID LOCALE_USER_DEFAULT = 0x0400;

namespace automation {

constexpr HRESULT failure(std::uint32_t code) { return static_cast<HRESULT>(code); }

}  // namespace automation

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = automation::failure(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = automation::failure(0x80004002);
inline constexpr HRESULT E_POINTER = automation::failure(0x80004003);
inline constexpr HRESULT E_ABORT = automation::failure(0x80004004);
inline constexpr HRESULT E_FAIL = automation::failure(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = automation::failure(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = automation::failure(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = automation::failure(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = automation::failure(0x80070057);
inline constexpr HRESULT DISP_E_UNKNOWNINTERFACE = automation::failure(0x80020001);
inline constexpr HRESULT DISP_E_MEMBERNOTFOUND = automation::failure(0x80020003);
inline constexpr HRESULT DISP_E_PARAMNOTFOUND = automation::failure(0x80020004);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = automation::failure(0x80020005);
inline constexpr HRESULT DISP_E_UNKNOWNNAME = automation::failure(0x80020006);
inline constexpr HRESULT DISP_E_NONAMEDARGS = automation::failure(0x80020007);
inline constexpr HRESULT DISP_E_BADVARTYPE = automation::failure(0x80020008);
inline constexpr HRESULT DISP_E_EXCEPTION = automation::failure(0x80020009);
inline constexpr HRESULT DISP_E_OVERFLOW = automation::failure(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = automation::failure(0x8002000B);
inline constexpr HRESULT DISP_E_UNKNOWNLCID = automation::failure(0x8002000C);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = automation::failure(0x8002000D);
inline constexpr HRESULT DISP_E_BADPARAMCOUNT = automation::failure(0x8002000E);
inline constexpr HRESULT DISP_E_PARAMNOTOPTIONAL = automation::failure(0x8002000F);
inline constexpr HRESULT TYPE_E_CANTLOADLIBRARY = automation::failure(0x80029C4A);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = automation::failure(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = automation::failure(0x80040111);
inline constexpr HRESULT CO_E_CLASSSTRING = automation::failure(0x800401F3);
inline constexpr HRESULT RPC_E_CALL_REJECTED = automation::failure(0x80010001);
inline constexpr HRESULT RPC_E_SERVERFAULT = automation::failure(0x80010105);
inline constexpr HRESULT RPC_E_DISCONNECTED = automation::failure(0x80010108);

inline constexpr int FACILITY_RPC = 1;
inline constexpr int FACILITY_WIN32 = 7;
inline constexpr int RPC_S_INVALID_STRING_BINDING = 1700;

constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }
constexpr int HRESULT_CODE(HRESULT result) { return result & 0xFFFF; }
constexpr int HRESULT_FACILITY(HRESULT result) { return (result >> 16) & 0x1FFF; }

// A program has no module of the component's own, and so no path of one.
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT = 2;
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 4;
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR name, HMODULE* module);
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size);
