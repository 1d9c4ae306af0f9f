// stock_report.cpp - the stock report of samples/stock_report.vbs by a C++ host, early bound; then a database that the
// host hands in.
//
//   stock_report STOCK.CSV REPORT.TXT DATABASE.TXT

#include <windows.h>

#include <oleauto.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Corvelle.h"
#include "component.h"
#include "sample_grid.h"
#include "stock_database.h"
#include "text_files.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr SHORT kRightAligned = 1;

// The columns of the table and how many display columns each gets.
enum Column { kCode, kName, kNameWidth, kQuantity, kPrice, kAmount, kDay, kPlace, kColumns };
constexpr LONG kWidths[kColumns] = {4, 28, 5, 9, 10, 9, 14, 10};

constexpr long kGridRows = 5;
constexpr long kGridCols = 4;
constexpr LONG kGridColumnWidth = 16;
constexpr SHORT kRightCentre = 7;

// ---- Money: automation's currency has four decimal places, as the prices have, and is exact ----

std::optional<CY> currency(const std::wstring& text) {
  CY value = {};
  if (FAILED(VarCyFromStr(bstr(text), LOCALE_USER_DEFAULT, 0, &value))) return std::nullopt;
  return value;
}

std::wstring text_of(CY value) {
  BSTR text = nullptr;
  check(VarBstrFromCy(value, LOCALE_USER_DEFAULT, 0, &text));
  const _bstr_t owned(text, false);
  return {text, owned.length()};
}

// ---- The report ----

struct Goods {
  std::wstring columns[kColumns];
  std::optional<CY> amount;
};

class StockReport {
 public:
  StockReport(std::wstring path, Lines stock) : path_(std::move(path)), stock_(std::move(stock)) {
    for (size_t i = 1; i < stock_.size(); ++i) goods_.push_back(goods_of(stock_[i]));
  }

  Lines lines() {
    add_title();
    add_table();
    add_totals();
    add_grids();
    add_machine();
    return std::move(lines_);
  }

 private:
  // Each calls the component.
  template <class Method, class... Arguments>
  std::wstring text(Method method, const Arguments&... arguments) {
    return text_from(*validate_.Get(), method, arguments...);
  }
  std::wstring field(const std::wstring& line, SHORT number) {
    return text(&_ClsValidate::getStr_Pf, bstr(line), number, bstr(L","));
  }
  LONG width(const std::wstring& content) {
    return value_from<SHORT>(*validate_.Get(), &_ClsValidate::GetByte_Pf, bstr(content), SHORT{0});
  }
  std::wstring padded(const std::wstring& content, LONG columns, SHORT right_aligned = 0) {
    return text(&_ClsValidate::Set_String1, bstr(content), columns, right_aligned);
  }
  std::wstring decimals(const std::wstring& number, SHORT places) {
    return text(&_ClsValidate::GetDecimalFmt_Bus, bstr(number), places);
  }
  std::wstring plain(const std::wstring& content) { return text(&_ClsValidate::CharChange, bstr(content)); }
  std::wstring date(const std::wstring& day, const std::wstring& separators = L"\x5E74\x6708\x65E5") {
    _bstr_t marks = bstr(separators);
    return text(&_ClsValidate::strDateFmt_Pf, bstr(day), &marks.GetBSTR());
  }
  bool finds(const std::wstring& pattern) {
    return value_from<VARIANT_BOOL>(*validate_.Get(), &_ClsValidate::File_Find, bstr(pattern)) != VARIANT_FALSE;
  }

  Goods goods_of(const std::wstring& line) {
    const std::wstring name = field(line, 2);
    const std::wstring quantity = plain(field(line, 3));
    const std::wstring price = field(line, 4);
    return {{field(line, 1), name, text(&_ClsValidate::Get_StrWidth, bstr(name)), decimals(quantity, 2),
             text(&_ClsValidate::GetDecimalFmt_4, bstr(price)), L"", date(field(line, 5)), plain(field(line, 6))},
            amount_of(quantity, price)};
  }

  // Quantity times price, none where the price is not settled.
  static std::optional<CY> amount_of(const std::wstring& quantity, const std::wstring& price) {
    const auto factor = currency(quantity);
    const auto single = currency(price);
    if (!factor || !single) return std::nullopt;
    CY product = {};
    check(VarCyMul(*factor, *single, &product));
    return product;
  }

  void add_title() {
    const auto days = value_from<SHORT>(*validate_.Get(), &_ClsValidate::getDays_Pf, SHORT{2006}, SHORT{6});
    SYSTEMTIME last = {};
    last.wYear = 2006;
    last.wMonth = 6;
    last.wDay = static_cast<WORD>(days);
    DATE day = 0;
    SystemTimeToVariantTime(&last, &day);
    const std::wstring compact = text(&_ClsValidate::dateToStr_Pf, day);
    lines_.push_back(L"Stock of " + date(compact, L"--") + L" (" + date(compact) + L")");
  }

  void add_table() {
    const std::wstring& names = stock_.front();
    add_rule();
    add_row({field(names, 1), field(names, 2), L"Width", field(names, 3), field(names, 4), L"Amount", field(names, 5),
             field(names, 6)});
    add_rule();
    for (const Goods& goods : goods_) add_goods(goods);
    add_rule();
  }

  void add_rule() {
    std::wstring rule = L"+";
    for (const LONG columns : kWidths) rule += std::wstring(static_cast<size_t>(columns) + 2, L'-') + L"+";
    lines_.push_back(rule);
  }

  void add_row(const std::vector<std::wstring>& row) {
    std::wstring line = L"|";
    for (int column = 0; column < kColumns; ++column) {
      const bool right = column >= kNameWidth && column <= kAmount;
      line +=
          L" " + padded(row[static_cast<size_t>(column)], kWidths[column], right ? kRightAligned : SHORT{0}) + L" |";
    }
    lines_.push_back(line);
  }

  // A name too wide for its column goes on in the lines below.
  void add_goods(const Goods& goods) {
    std::vector<std::wstring> row(goods.columns, goods.columns + kColumns);
    if (goods.amount) row[kAmount] = decimals(text_of(*goods.amount), 2);
    std::wstring name = row[kName];
    row[kName] = head_of(name);
    add_row(row);
    while (name.size() > head_of(name).size()) {
      name.erase(0, head_of(name).size());
      std::vector<std::wstring> more(kColumns);
      more[kName] = head_of(name);
      add_row(more);
    }
  }

  // As much of a name as fits its column. Get_String keeps a character whole that straddles the end, hence one less.
  std::wstring head_of(const std::wstring& name) {
    if (width(name) <= kWidths[kName]) return name;
    return text(&_ClsValidate::Get_String, bstr(name), LONG{1}, kWidths[kName] - 1);
  }

  void add_totals() {
    CY total = {};
    int settled = 0;
    const Goods* widest = &goods_.front();
    for (const Goods& goods : goods_) {
      if (goods.amount) {
        check(VarCyAdd(total, *goods.amount, &total));
        ++settled;
      }
      if (std::stoi(goods.columns[kNameWidth]) > std::stoi(widest->columns[kNameWidth])) widest = &goods;
    }
    lines_.push_back(std::to_wstring(goods_.size()) + L" kinds of goods, " + std::to_wstring(settled) +
                     L" of them with a price, worth " + text(&_ClsValidate::GetDecimalFmt_4, bstr(text_of(total))) +
                     L" in all");
    lines_.push_back(L"The widest name takes " + widest->columns[kNameWidth] + L" columns: " + widest->columns[kName]);
  }

  // The headings and the first goods in a grid, before and after the component has worked on it.
  void add_grids() {
    const auto grid = std::make_shared<SampleGrid>();
    grid->rows = kGridRows;
    grid->cols = kGridCols;
    for (long r = 0; r < kGridRows; ++r) {
      for (long c = 0; c < kGridCols; ++c) {
        grid->texts[{r, c}] = field(stock_[static_cast<size_t>(r)], static_cast<SHORT>(c + 1));
      }
    }
    const _variant_t object = given(new_grid(grid));
    SHORT alignment = kRightCentre;
    _variant_t nothing;
    add_grid(L"A grid, as the host has filled it", *grid);
    check(validate_->SetGrdCenter(object, &nothing));
    check(validate_->SetGrdAlign(object, &alignment, &nothing));
    add_grid(L"The grid after SetGrdCenter and SetGrdAlign 7", *grid);
    check(validate_->ClearGrd(object));
    add_grid(L"The grid after ClearGrd", *grid);
  }

  void add_grid(const std::wstring& title, const SampleGrid& grid) {
    lines_.push_back(L"");
    lines_.push_back(title + L": " + std::to_wstring(grid.rows) + L" rows, the current cell is " +
                     std::to_wstring(grid.row) + L"," + std::to_wstring(grid.col));
    for (long r = 0; r < kGridRows; ++r) {
      std::wstring line = L"|";
      for (long c = 0; c < grid.cols; ++c) line += L" " + aligned(grid.text(r, c), grid.alignment(r, c)) + L" |";
      lines_.push_back(line);
    }
  }

  // A flex grid's alignments are left, centre and right, three of each for the heights; then comes its own choice,
  // left.
  std::wstring aligned(const std::wstring& content, long alignment) {
    const LONG free = kGridColumnWidth - width(content);
    switch (alignment / 3) {
      case 1: return std::wstring(static_cast<size_t>(free / 2), L' ') + padded(content, kGridColumnWidth - free / 2);
      case 2: return padded(content, kGridColumnWidth, kRightAligned);
      default: return padded(content, kGridColumnWidth);
    }
  }

  void add_machine() {
    const std::wstring folder = text(&_ClsValidate::GetPath, bstr(path_));
    lines_.push_back(L"");
    lines_.push_back(L"Beside the stock list: " + found(folder + L"*.csv") + L" files *.csv, " +
                     found(folder + L"*.mdb") + L" files *.mdb");
    lines_.push_back(L"Made on the computer " + text(&_ClsValidate::GetComputerNm));
  }
  std::wstring found(const std::wstring& pattern) { return finds(pattern) ? L"some" : L"no"; }

  ComPtr<_ClsValidate> validate_ = created<_ClsValidate>(CLSID_ClsValidate, IID__ClsValidate);
  std::wstring path_;
  Lines stock_;
  std::vector<Goods> goods_;
  Lines lines_;
};

// ---- The database ----

class DatabaseReport {
 public:
  Lines lines() {
    add_tables();
    add_indexes();
    add_failure();
    return std::move(lines_);
  }

 private:
  void add_tables() {
    for (const wchar_t* name : {L"Stock", L"  stock ", L"Sales"}) {
      const auto exists = value_from<VARIANT_BOOL>(*validate_.Get(), &_ClsValidate::IFTable, database(), bstr(name));
      lines_.push_back(std::wstring(L"IFTable \"") + name + L"\": " + (exists != VARIANT_FALSE ? L"true" : L"false"));
    }
  }

  // What cannot be added passes silently, so the indexes are shown that came of it.
  void add_indexes() {
    check(validate_->CreateIndex(database(), bstr(L"Stock"), bstr(L"ByCode"), bstr(L"Code")));
    check(validate_->CreateIndex2(database(), bstr(L"Stock"), bstr(L"ByPlace"), bstr(L"Place"), bstr(L"Name")));
    check(validate_->CreateIndex(database(), bstr(L"Stock"), bstr(L"ByCode"), bstr(L"Name")));
    check(validate_->CreateIndex(database(), bstr(L"Stock"), bstr(L"ByColour"), bstr(L"Colour")));
    check(validate_->CreateIndex(database(), bstr(L"Sales"), bstr(L"ByDay"), bstr(L"Day")));
    for (const StockIndex& index : tables_->front().indexes) {
      std::wstring fields;
      for (const std::wstring& field : index.fields) fields += L" " + field;
      lines_.push_back(L"Index " + index.name + L" on" + fields);
    }
  }

  // IFField wants a recordset with the ADO interface, which no database of Data Access Objects has.
  void add_failure() {
    try {
      value_from<VARIANT_BOOL>(*validate_.Get(), &_ClsValidate::IFField, database(), bstr(L"Stock"), bstr(L"Code"),
                               SHORT{0});
      lines_.push_back(L"IFField has an answer");
    } catch (const CallFailed& failure) {
      wchar_t number[16];
      swprintf(number, 16, L"%08lX", static_cast<unsigned long>(failure.result));
      lines_.push_back(std::wstring(L"IFField fails with ") + number + L": " + failure.description);
    }
  }

  // The object as the interface that it answers for.
  Database* database() const { return reinterpret_cast<Database*>(object_.Get()); }

  ComPtr<_ClsValidate> validate_ = created<_ClsValidate>(CLSID_ClsValidate, IID__ClsValidate);
  std::shared_ptr<StockTables> tables_ = std::make_shared<StockTables>(
      StockTables{{L"Stock", {L"Code", L"Name", L"Quantity", L"Price", L"Day", L"Place"}, {}}});
  _variant_t owner_ = given(new_database(tables_));
  ComPtr<IDispatch> object_ = V_DISPATCH(&owner_);
  Lines lines_;
};

void run(const std::wstring& stock, const std::wstring& report, const std::wstring& database) {
  write_unicode(report, StockReport(stock, ansi_lines(stock)).lines());
  write_unicode(database, DatabaseReport().lines());
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 4) {
    std::fputs("usage: stock_report STOCK.CSV REPORT.TXT DATABASE.TXT\n", stderr);
    return 2;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int status = 0;
  try {
    run(arguments[1], arguments[2], arguments[3]);
  } catch (const CallFailed& failure) {
    std::fwprintf(stderr, L"stock_report: %08lX %ls\n", static_cast<unsigned long>(failure.result),
                  failure.description.c_str());
    status = 1;
  }
  CoUninitialize();
  return status;
}
