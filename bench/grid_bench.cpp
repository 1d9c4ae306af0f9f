// The grid operations on a grid of 32,000 columns, against the calls alone that they cannot do without.
//
// The grid does next to nothing with a call, so the ratio is the worst that a host can see.

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <cwchar>
#include <iterator>

#include "bench/ratio_table.h"
#include "component/host_grid.h"
#include "data/grid_helpers.h"

namespace corvelle::bench {
namespace {

constexpr std::int16_t kColumns = 32000;

// A grid that remembers what kind of value it was given last.
class BareGrid final : public IDispatch {
 public:
  enum Member : DISPID { rows, cols, row, col, cell_alignment, col_alignment, text_matrix };

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override {
    *result = interface_id == IID_IUnknown || interface_id == IID_IDispatch ? this : nullptr;
    return *result == nullptr ? E_NOINTERFACE : S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    constexpr const wchar_t* kNames[] = {L"Rows",          L"Cols",         L"Row",       L"Col",
                                         L"CellAlignment", L"ColAlignment", L"TextMatrix"};
    for (std::size_t i = 0; i < std::size(kNames); ++i) {
      if (std::wcscmp(names[0], kNames[i]) == 0) return ids[0] = static_cast<DISPID>(i), S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }
  // The compiler may not look into it, as it cannot look into a host's object.
  [[gnu::noipa]] STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
    if (member == cols) {
      V_VT(result) = VT_I4;
      V_I4(result) = kColumns;
    } else {
      last_ = V_VT(&parameters->rgvarg[0]);
    }
    return S_OK;
  }

 private:
  volatile VARTYPE last_ = VT_EMPTY;
};

// One assignment with its arguments made beforehand, the least that late binding takes.
class Assignment {
 public:
  Assignment(IDispatch& grid, DISPID member, UINT arguments) : grid_(grid), member_(member) {
    parameters_.cArgs = arguments;
    for (VARIANT& argument : arguments_) V_VT(&argument) = VT_I2;
  }
  void operator()(std::int16_t value) {
    V_I2(&arguments_[0]) = value;
    grid_.Invoke(member_, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters_, nullptr, nullptr, nullptr);
  }

 private:
  IDispatch& grid_;
  DISPID member_;
  VARIANT arguments_[3];
  DISPID put_ = DISPID_PROPERTYPUT;
  DISPPARAMS parameters_ = {arguments_, &put_, 0, 1};
};

void compare() {
  BareGrid bare;
  VARIANT value;
  V_VT(&value) = VT_DISPATCH;
  V_DISPATCH(&value) = &bare;
  keep(value);  // from here on the compiler cannot know what kind of object it is
  IDispatch& grid = *V_DISPATCH(&value);
  Assignment col(grid, BareGrid::col, 1);
  Assignment cell_alignment(grid, BareGrid::cell_alignment, 1);
  Assignment col_alignment(grid, BareGrid::col_alignment, 2);
  Assignment text_matrix(grid, BareGrid::text_matrix, 3);
  const auto each_column = [](auto&& assign) {
    for (std::int16_t column = 0; column < kColumns; ++column) assign(column);
  };
  print_ratio(
      "grid", "SetGrdCenter of 32,000 columns", "its 64,000 assignments",
      [&] {
        HostGrid host(value, u"SetGrdCenter");
        keep(SetGrdCenter(host));
      },
      [&] {
        each_column([&](std::int16_t column) {
          col(column);
          cell_alignment(4);
        });
      });
  print_ratio(
      "grid", "SetGrdAlign of 32,000 columns", "its 32,000 assignments",
      [&] {
        HostGrid host(value, u"SetGrdAlign");
        keep(SetGrdAlign(host, 1));
      },
      [&] { each_column([&](std::int16_t column) { col_alignment(column); }); });
  print_ratio(
      "grid", "ClearGrd of 32,000 columns", "its 32,000 assignments",
      [&] {
        HostGrid host(value, u"ClearGrd");
        keep(ClearGrd(host));
      },
      [&] { each_column([&](std::int16_t column) { text_matrix(column); }); });
}

}  // namespace
}  // namespace corvelle::bench

int main() {
  corvelle::bench::compare();
  return 0;
}
