// The grid operations against a grid that behaves like a flex grid. Compiled twice: natively the operations' own port
// stands before it, on Windows also the component's adapter and a late-bound COM object.
#include "data/grid_helpers.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>

#include "tests/data/faces.h"
#include "tests/hosts/grid_model.h"
#include "tests/support/floating_point.h"
#include "tests/support/runtime_error.h"

namespace corvelle::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Pair;
using ::testing::SizeIs;

class GridHelpers : public ::testing::Test {
 protected:
  void TearDown() override { EXPECT_EQ(model_.journal.live_objects(), 0); }

  Error center() { return SetGrdCenter(*face_of(model_)); }
  Error align(const std::int16_t& alignment) { return SetGrdAlign(*face_of(model_), alignment); }
  Error clear() { return ClearGrd(*face_of(model_)); }

  void fill(std::int32_t rows, std::int32_t columns) {
    model_.rows = rows;
    model_.cols = columns;
    for (std::int32_t row = 0; row < rows; ++row) {
      for (std::int32_t column = 0; column < columns; ++column) model_.texts.emplace(std::pair(row, column), u"中");
    }
  }

  GridModel model_;
};

class SetGrdCenterTest : public GridHelpers {};

TEST_F(SetGrdCenterTest, CentresRowZeroColumnByColumn) {
  model_.cols = 2;
  EXPECT_FALSE(center());
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Row=0", "Cols?", "Col=0", "CellAlignment=4", "Col=1", "CellAlignment=4"));
}

TEST_F(SetGrdCenterTest, LeavesTheCurrentCellAtTheLastColumn) {
  EXPECT_FALSE(center());
  EXPECT_EQ(model_.row, 0);
  EXPECT_EQ(model_.col, 4);
  EXPECT_THAT(model_.cell_alignments, ElementsAre(Pair(Pair(0, 0), 4), Pair(Pair(0, 1), 4), Pair(Pair(0, 2), 4),
                                                  Pair(Pair(0, 3), 4), Pair(Pair(0, 4), 4)));
}

TEST_F(SetGrdCenterTest, LeavesWhatWasAssignedBeforeAnError) {
  model_.cols = 2;
  EXPECT_FALSE(center());
  const std::vector<std::string> all = model_.journal.calls();
  const HostFailure failure{kInvalidCol, u"planned", u"FlexGrid"};
  for (std::size_t failing = 1; failing <= all.size(); ++failing) {
    SCOPED_TRACE(failing);
    model_.journal.start_anew();
    model_.journal.fail_call(failing, failure);
    EXPECT_HOST_ERROR(center(), failure.hresult);
    EXPECT_THAT(model_.journal.calls(), ElementsAreArray(all.data(), failing));
    EXPECT_EQ(model_.journal.live_objects(), 0);
  }
}

TEST_F(SetGrdCenterTest, PassesOnTheGridsOwnError) {
  model_.rows = 0;
  const Error error = center();
  ASSERT_TRUE(error);
  EXPECT_EQ(error.hresult(), kInvalidRow);
  EXPECT_EQ(error.description(), u"Invalid Row value");
  EXPECT_EQ(error.source(), u"FlexGrid");
}

class SetGrdAlignTest : public GridHelpers {};

TEST_F(SetGrdAlignTest, AlignsColumnByColumn) {
  model_.cols = 3;
  EXPECT_FALSE(align(7));
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Cols?", "ColAlignment(0)=7", "ColAlignment(1)=7", "ColAlignment(2)=7"));
}

TEST_F(SetGrdAlignTest, ReadsTheCallersVariableForEachColumn) {
  std::int16_t alignment = 1;
  model_.cols = 3;
  model_.journal.on_call = [&](const std::string&) { ++alignment; };
  EXPECT_FALSE(align(alignment));
  EXPECT_THAT(model_.journal.calls(),
              ElementsAre("Cols?", "ColAlignment(0)=2", "ColAlignment(1)=3", "ColAlignment(2)=4"));
  EXPECT_EQ(alignment, 5) << "nothing is written back";
}

TEST_F(SetGrdAlignTest, PassesOnTheGridsErrorForAnAlignmentOutOfItsRange) {
  EXPECT_HOST_ERROR(align(10), kInvalidPropertyValue);
  EXPECT_HOST_ERROR(align(-1), kInvalidPropertyValue);
  EXPECT_THAT(model_.col_alignments, SizeIs(0));
}

class ClearGrdTest : public GridHelpers {};

TEST_F(ClearGrdTest, ResizesThenEmptiesRowOneColumnByColumn) {
  model_.cols = 2;
  EXPECT_FALSE(clear());
  EXPECT_THAT(model_.journal.calls(), ElementsAre("Rows=200", "Cols?", "TextMatrix(1,0)=\"\"", "TextMatrix(1,1)=\"\""));
}

TEST_F(ClearGrdTest, KeepsTheTextOfAllOtherRows) {
  fill(300, 2);
  EXPECT_FALSE(clear());
  EXPECT_EQ(model_.rows, 200);
  EXPECT_EQ(model_.texts.size(), 199u * 2u);
  for (const std::int32_t row : {0, 2, 199}) EXPECT_EQ((model_.texts.at({row, 1})), u"中");
  EXPECT_FALSE(model_.texts.contains({1, 0}) || model_.texts.contains({1, 1}));
}

TEST_F(ClearGrdTest, GrowsASmallerGrid) {
  fill(1, 1);
  EXPECT_FALSE(clear());
  EXPECT_EQ(model_.rows, 200);
  EXPECT_THAT(model_.texts, ElementsAre(Pair(Pair(0, 0), u"中")));
}

// Each operation with the calls that it makes of a grid without columns, and those for each column.
struct Operation {
  const char* name;
  std::function<Error(Grid&)> run;
  std::vector<std::string> calls_without_columns;
  std::size_t calls_per_column;
};

const std::vector<Operation> kOperations = {
    {"SetGrdCenter", [](Grid& grid) { return SetGrdCenter(grid); }, {"Row=0", "Cols?"}, 2},
    {"SetGrdAlign", [](Grid& grid) { return SetGrdAlign(grid, 1); }, {"Cols?"}, 1},
    {"ClearGrd", [](Grid& grid) { return ClearGrd(grid); }, {"Rows=200", "Cols?"}, 1},
};

class ColumnsTest : public GridHelpers {
 protected:
  // The calls that `operation` makes of a grid with `columns` columns, and the error that it ends with.
  std::pair<std::size_t, Error> outcome(const Operation& operation, double columns) {
    model_.journal.start_anew();
    model_.cols = columns;
    Error error = operation.run(*face_of(model_));
    return {model_.journal.calls().size(), std::move(error)};
  }
};

TEST_F(ColumnsTest, AreVisitedUpToTheBoundOfTheCounter) {
  for (const Operation& operation : kOperations) {
    for (const int columns : {1, 5, 300, 32767}) {
      SCOPED_TRACE(::testing::Message() << operation.name << " of " << columns << " columns");
      const auto [calls, error] = outcome(operation, columns);
      EXPECT_EQ(calls, operation.calls_without_columns.size() +
                           operation.calls_per_column * static_cast<std::size_t>(columns));
      EXPECT_FALSE(error);
    }
  }
}

TEST_F(ColumnsTest, AreNotVisitedWhereThereAreNone) {
  for (const Operation& operation : kOperations) {
    for (const int columns : {0, -1, -5, -32767}) {
      SCOPED_TRACE(::testing::Message() << operation.name << " of " << columns << " columns");
      EXPECT_FALSE(outcome(operation, columns).second);
      EXPECT_THAT(model_.journal.calls(), ElementsAreArray(operation.calls_without_columns));
    }
  }
}

TEST_F(ColumnsTest, OverflowBehindTheLastOneAtTheBound) {
  for (const Operation& operation : kOperations) {
    SCOPED_TRACE(operation.name);
    const auto [calls, error] = outcome(operation, 32768);
    EXPECT_EQ(calls, operation.calls_without_columns.size() + operation.calls_per_column * 32768u);
    EXPECT_TRUE(is_runtime_error(error, ErrorNumber::overflow));
  }
}

TEST_F(ColumnsTest, OverflowBeforeTheFirstOneBeyondTheBound) {
  for (const Operation& operation : kOperations) {
    for (const double columns : {32769.0, 40000.0, 2147483647.0, -32768.0, 1e300, -1e300}) {
      SCOPED_TRACE(::testing::Message() << operation.name << " of " << columns << " columns");
      const auto [calls, error] = outcome(operation, columns);
      EXPECT_TRUE(is_runtime_error(error, ErrorNumber::overflow));
      EXPECT_THAT(model_.journal.calls(), ElementsAreArray(operation.calls_without_columns));
    }
  }
}

TEST_F(ColumnsTest, SayWhatOverflows) {
  model_.cols = 40000;
  EXPECT_RUNTIME_ERROR_SAYING(center(), ErrorNumber::overflow,
                              u"SetGrdCenter: Msfg.Cols - 1 gives 39999, which does not fit in 16 bits");
  model_.cols = 32768;
  EXPECT_RUNTIME_ERROR_SAYING(align(1), ErrorNumber::overflow,
                              u"SetGrdAlign: the step past the last column of Msfg gives 32768, which does not fit in "
                              u"16 bits");
}

TEST_F(ColumnsTest, RoundTheLastOneHalfToEven) {
  const auto columns_aligned = [&](double columns) { return outcome(kOperations[1], columns).first - 1; };
  EXPECT_EQ(columns_aligned(1.5), 1u) << "0.5 becomes 0";
  EXPECT_EQ(columns_aligned(2.5), 3u) << "1.5 becomes 2";
  EXPECT_EQ(columns_aligned(3.5), 3u) << "2.5 becomes 2";
}

TEST_F(ColumnsTest, OverflowWhereTheirNumberIsNone) {
  const auto [calls, error] = outcome(kOperations[1], std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(is_runtime_error(error, ErrorNumber::overflow));
}

// A grid with a number of columns that is never looked at, which counts what is done to it.
class BareGrid final : public Grid {
 public:
  explicit BareGrid(std::uint64_t cols) : cols_(cols) {}

  void set_rows(std::int16_t) override {}
  void read_cols(double& cols) override { std::memcpy(&cols, &cols_, sizeof cols); }
  void set_row(std::int16_t) override {}
  void set_col(std::int16_t) override { ++calls; }
  void set_cell_alignment(std::int16_t) override { ++calls; }
  void set_col_alignment(std::int16_t, std::int16_t) override { ++calls; }
  void set_text_matrix(std::int16_t, std::int16_t, std::u16string_view) override { ++calls; }

  int calls = 0;

 private:
  std::uint64_t cols_;
};

// How often `operation` touches a column; -1 for an overflow, which touches none.
int columns_touched(const Operation& operation, std::uint64_t cols, const FloatingPoint& setting) {
  BareGrid grid(cols);
  Error error;
  EXPECT_TRUE(keeps(setting, [&] { error = operation.run(grid); }));
  return is_runtime_error(error, ErrorNumber::overflow) && grid.calls == 0 ? -1 : grid.calls;
}

TEST(Columns, DoNotDependOnFloatingPoint) {
  for (const Operation& operation : kOperations) {
    for (const std::uint64_t cols : kTroublesomeNumbers) {
      const int expected = columns_touched(operation, cols, kUsualFloatingPoint);
      for (const FloatingPoint& setting : every_floating_point()) {
        EXPECT_EQ(columns_touched(operation, cols, setting), expected)
            << operation.name << std::hex << ", " << cols << ", x87 " << setting.x87 << ", SSE " << setting.sse;
      }
    }
    EXPECT_EQ(columns_touched(operation, std::bit_cast<std::uint64_t>(std::nan("")), kStrictFloatingPoint), -1);
    const auto calls = static_cast<int>(operation.calls_per_column);
    EXPECT_EQ(columns_touched(operation, std::bit_cast<std::uint64_t>(2.5), kStrictFloatingPoint), 3 * calls);
    EXPECT_EQ(columns_touched(operation, std::bit_cast<std::uint64_t>(3.5), kStrictFloatingPoint), 3 * calls);
  }
}

}  // namespace
}  // namespace corvelle::testing
