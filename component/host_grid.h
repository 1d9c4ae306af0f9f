// component/host_grid.h - the host's flex grid behind the operations' port.
#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string_view>

#include "component/host_object.h"
#include "data/grid.h"

namespace corvelle {

// HostGrid drives the host's grid by late binding alone: a control, a script object, a proxy. Each member is looked up
// once, when it is first used. It holds its own reference to the grid as long as it lives.
//   HostGrid grid(Msfg, u"ClearGrd");  // Msfg may hold no object: object required (424) when it is first used
//   ClearGrd(grid);
class HostGrid final : public Grid {
 public:
  // `Msfg` may be by reference; `operation` is named in the errors. Making the object raises none.
  HostGrid(const VARIANT& Msfg, std::u16string_view operation)
      : call_{{operation, u"Msfg"}, errors()}, grid_(Msfg, call_) {}
  HostGrid(const HostGrid&) = delete;
  HostGrid& operator=(const HostGrid&) = delete;

  void set_rows(std::int16_t rows) override;
  void read_cols(double& cols) override;
  void set_row(std::int16_t row) override;
  void set_col(std::int16_t col) override;
  void set_cell_alignment(std::int16_t alignment) override;
  void set_col_alignment(std::int16_t col, std::int16_t alignment) override;
  void set_text_matrix(std::int16_t row, std::int16_t col, std::u16string_view text) override;

 private:
  HostCall call_;
  HostObject grid_;
  HostMember rows_{grid_, u"Rows"};
  HostMember cols_{grid_, u"Cols"};
  HostMember row_{grid_, u"Row"};
  HostMember col_{grid_, u"Col"};
  HostMember cell_alignment_{grid_, u"CellAlignment"};
  HostMember col_alignment_{grid_, u"ColAlignment"};
  HostMember text_matrix_{grid_, u"TextMatrix"};
  ScopedBstr text_;  // the last cell's, since the next one mostly gets the same
};

}  // namespace corvelle
