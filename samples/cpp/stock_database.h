// stock_database.h - a small database in memory, shaped like one of Data Access Objects.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "late_bound.h"

struct StockIndex {
  std::wstring name;
  std::vector<std::wstring> fields;
};

struct StockTable {
  std::wstring name;
  std::vector<std::wstring> fields;
  std::vector<StockIndex> indexes;
};

using StockTables = std::vector<StockTable>;

// A database object over `tables`, with the caller's reference. It has the members that Corvelle uses, answers for the
// interface Database, and refuses what Data Access Objects refuse, with their error numbers.
LateBound* new_database(std::shared_ptr<StockTables> tables);
