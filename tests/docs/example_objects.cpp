// A DLL with what the reference's examples work on: Corvelle.ExampleDatabase, like a database of Data Access Objects
// with the tables of DaoModel, and Corvelle.ExampleGrid, like a flex grid of 3 rows and 5 columns.
#include <windows.h>

#include <shlwapi.h>
#include <unknwn.h>

#include <array>
#include <string>

#include "tests/hosts/dao_host.h"
#include "tests/hosts/grid_host.h"

namespace corvelle::testing {
namespace {

// The models live as long as the DLL: a script may hold parts of a database when it lets go of the database itself.
LateBound* new_database() {
  static DaoModel model;
  return new_dao_database(model);
}

// Lets a script read the property, too; the component only assigns it.
void let_read(LateBound& grid, const wchar_t* name, const LateBound::Member& member) {
  auto* asked = const_cast<LPOLESTR>(name);
  DISPID id = DISPID_UNKNOWN;
  grid.GetIDsOfNames(IID_NULL, &asked, 1, LOCALE_USER_DEFAULT, &id);
  grid.add(name, DISPATCH_PROPERTYGET, member, id);
}

LateBound* new_readable_grid() {
  static GridModel model;
  LateBound* grid = new_grid(model);
  let_read(*grid, L"Rows", [](MemberCall& call) { call.give(model.rows); });
  let_read(*grid, L"Row", [](MemberCall& call) { call.give(model.row); });
  let_read(*grid, L"Col", [](MemberCall& call) { call.give(model.col); });
  let_read(*grid, L"CellAlignment", [](MemberCall& call) { call.give(model.cell_alignments[{model.row, model.col}]); });
  let_read(*grid, L"ColAlignment", [](MemberCall& call) { call.give(model.col_alignments[call.int16(0)]); });
  let_read(*grid, L"TextMatrix", [](MemberCall& call) {
    const auto found = model.texts.find({call.int16(0), call.int16(1)});
    call.give(found != model.texts.end() ? std::u16string_view(found->second) : std::u16string_view());
  });
  return grid;
}

// Lives as long as the DLL, too, and so counts no references.
class ExampleClass final : public IClassFactory {
 public:
  ExampleClass(const CLSID& id, const wchar_t* id_text, const wchar_t* prog_id, LateBound* (*make)())
      : id_(id), id_text_(id_text), prog_id_(prog_id), make_(make) {}
  virtual ~ExampleClass() = default;
  ExampleClass(const ExampleClass&) = default;
  ExampleClass& operator=(const ExampleClass&) = delete;

  const CLSID& id() const { return id_; }
  std::wstring prog_id_key() const { return prog_id_; }
  std::wstring class_key() const { return L"CLSID\\" + id_text_; }
  std::wstring id_text() const { return id_text_; }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    const bool provided = interface_id == IID_IUnknown || interface_id == IID_IClassFactory;
    *result = provided ? this : nullptr;
    return provided ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID interface_id, void** result) override {
    *result = nullptr;
    return outer != nullptr ? CLASS_E_NOAGGREGATION : owned(make_())->QueryInterface(interface_id, result);
  }
  STDMETHODIMP LockServer(BOOL /*lock*/) override { return S_OK; }

 private:
  CLSID id_;
  std::wstring id_text_;
  std::wstring prog_id_;
  LateBound* (*make_)();
};

std::array<ExampleClass, 2>& classes() {
  static std::array<ExampleClass, 2> classes = {
      ExampleClass({0x7E3B6A52, 0x44B0, 0x4C0D, {0x9A, 0x5C, 0x1B, 0x9D, 0x0C, 0x6E, 0x52, 0x18}},
                   L"{7E3B6A52-44B0-4C0D-9A5C-1B9D0C6E5218}", L"Corvelle.ExampleDatabase", new_database),
      ExampleClass({0x2F8D41C7, 0x9B1E, 0x4E6A, {0x8D, 0x33, 0x50, 0xA7, 0x1C, 0x94, 0x0B, 0x6F}},
                   L"{2F8D41C7-9B1E-4E6A-8D33-50A71C940B6F}", L"Corvelle.ExampleGrid", new_readable_grid)};
  return classes;
}

std::wstring own_path() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<const wchar_t*>(&own_path), &module);
  wchar_t path[MAX_PATH] = {};
  return {path, GetModuleFileNameW(module, path, MAX_PATH)};
}

// Gives the key below HKEY_CLASSES_ROOT that default value.
bool set(const std::wstring& key, const std::wstring& value) {
  return RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(),
                      static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

bool enter(const ExampleClass& example) {
  return set(example.prog_id_key() + L"\\CLSID", example.id_text()) &&
         set(example.class_key(), example.prog_id_key()) && set(example.class_key() + L"\\InprocServer32", own_path());
}

}  // namespace
}  // namespace corvelle::testing

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, void** result) {
  for (corvelle::testing::ExampleClass& example : corvelle::testing::classes()) {
    if (example.id() == class_id) return example.QueryInterface(interface_id, result);
  }
  *result = nullptr;
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return S_FALSE; }

STDAPI DllRegisterServer() {
  for (const corvelle::testing::ExampleClass& example : corvelle::testing::classes()) {
    if (!corvelle::testing::enter(example)) return E_FAIL;
  }
  return S_OK;
}

STDAPI DllUnregisterServer() {
  for (const corvelle::testing::ExampleClass& example : corvelle::testing::classes()) {
    SHDeleteKeyW(HKEY_CLASSES_ROOT, example.prog_id_key().c_str());
    SHDeleteKeyW(HKEY_CLASSES_ROOT, example.class_key().c_str());
  }
  return S_OK;
}
