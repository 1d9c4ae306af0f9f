// console/known_grid.h - a flex grid for the known cases: three columns, and a note of all that is done to it.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <atomic>
#include <string>

namespace corvelle::console {

// Answers to the members that operations on grids use, late bound; each assignment is noted as "Row=0".
class KnownGrid final : public IDispatch {
 public:
  KnownGrid() = default;
  virtual ~KnownGrid() = default;
  KnownGrid(const KnownGrid&) = delete;
  KnownGrid& operator=(const KnownGrid&) = delete;

  // The notes so far, with a blank between two.
  const std::wstring& notes() const { return notes_; }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** result) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  STDMETHODIMP GetIDsOfNames(REFIID interface_id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID interface_id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override;

 private:
  std::atomic<ULONG> references_ = 1;
  std::wstring notes_;
};

}  // namespace corvelle::console
