#include "tests/hosts/grid_model.h"

#include "tests/support/utf8.h"

namespace corvelle::testing {
namespace {

void require(bool fits, std::int32_t hresult, const char16_t* description) {
  if (!fits) throw HostFailure{hresult, description, u"FlexGrid"};
}

bool is_alignment(std::int32_t value) { return value >= 0 && value <= 9; }

std::string assignment(const char* member, std::int32_t value) {
  return std::string(member) + "=" + std::to_string(value);
}

}  // namespace

void GridModel::set_rows(std::int32_t value) {
  journal.note(assignment("Rows", value));
  require(value >= 0, kInvalidPropertyValue, u"Invalid property value");
  rows = value;
  std::erase_if(texts, [&](const auto& cell) { return cell.first.first >= rows; });
}

double GridModel::get_cols() {
  journal.note("Cols?");
  return cols;
}

void GridModel::set_row(std::int32_t value) {
  journal.note(assignment("Row", value));
  require(has_row(value), kInvalidRow, u"Invalid Row value");
  row = value;
}

void GridModel::set_col(std::int32_t value) {
  journal.note(assignment("Col", value));
  require(has_col(value), kInvalidCol, u"Invalid Col value");
  col = value;
}

void GridModel::set_cell_alignment(std::int32_t alignment) {
  journal.note(assignment("CellAlignment", alignment));
  require(is_alignment(alignment), kInvalidPropertyValue, u"Invalid property value");
  cell_alignments[{row, col}] = alignment;
}

void GridModel::set_col_alignment(std::int32_t column, std::int32_t alignment) {
  journal.note("ColAlignment(" + assignment((std::to_string(column) + ")").c_str(), alignment));
  require(has_col(column), kSubscriptOutOfRange, u"Subscript out of range");
  require(is_alignment(alignment), kInvalidPropertyValue, u"Invalid property value");
  col_alignments[column] = alignment;
}

void GridModel::set_text_matrix(std::int32_t at_row, std::int32_t at_col, std::u16string_view text) {
  journal.note("TextMatrix(" + std::to_string(at_row) + "," + std::to_string(at_col) + ")=\"" + utf8(text) + "\"");
  require(has_row(at_row) && has_col(at_col), kSubscriptOutOfRange, u"Subscript out of range");
  texts.erase({at_row, at_col});
  if (!text.empty()) texts.emplace(std::pair(at_row, at_col), text);
}

}  // namespace corvelle::testing
