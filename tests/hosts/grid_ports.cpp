#include "tests/hosts/grid_ports.h"

namespace corvelle::testing {
namespace {

class PortGrid final : public Grid {
 public:
  explicit PortGrid(GridModel& model) : model_(model) {}
  void set_rows(std::int16_t rows) override { run(&GridModel::set_rows, rows); }
  void read_cols(double& cols) override {
    attempt(errors(), [&] { cols = model_.get_cols(); });
  }
  void set_row(std::int16_t row) override { run(&GridModel::set_row, row); }
  void set_col(std::int16_t col) override { run(&GridModel::set_col, col); }
  void set_cell_alignment(std::int16_t alignment) override { run(&GridModel::set_cell_alignment, alignment); }
  void set_col_alignment(std::int16_t col, std::int16_t alignment) override {
    run(&GridModel::set_col_alignment, col, alignment);
  }
  void set_text_matrix(std::int16_t row, std::int16_t col, std::u16string_view text) override {
    run(&GridModel::set_text_matrix, row, col, text);
  }

 private:
  template <class... Parameters, class... Arguments>
  void run(void (GridModel::*step)(Parameters...), Arguments... arguments) {
    attempt(errors(), [&] { (model_.*step)(arguments...); });
  }

  GridModel& model_;
};

}  // namespace

std::shared_ptr<Grid> ports_to(GridModel& model) { return std::make_shared<PortGrid>(model); }

}  // namespace corvelle::testing
