// data/schema_helpers.h - tests of a database's schema, and new indexes in it.
//
// The database stays the host's: it is neither opened nor closed, and every reference taken to one of its objects is
// given back before an operation returns, whatever the outcome. Names are compared character by character after
// upper-casing both; trimming removes spaces (U+0020) only.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/result.h"
#include "data/database.h"

namespace corvelle {

// Whether `DB` has a table called `TableName`, both names trimmed. System and linked tables count, saved queries do
// not. The table definitions are refreshed first.
//   IFTable(DB, u"  customers ") == true where there is a table CUSTOMERS
// Raises type mismatch (13) where the table definitions hold something that is none; passes the database's own
// errors on.
Result<bool> IFTable(Database& DB, std::u16string_view TableName);

// Whether the table `TableName` (taken as it is, "a_s" put before it where `Flag` is 1) has a field called
// `FieldName`, which is trimmed; the field's own name is not.
// Kept: the recordset is wanted through the ADO recordset interface, which one of Data Access Objects does not
// provide, so for such a database this always raises type mismatch (13) once the table could be opened. The recordset
// is not closed.
//   IFField(DB, u"Orders", u"Total", 1) opens a_sOrders
// Raises type mismatch (13) for a recordset without that interface and for a field that is none; passes the
// database's own errors on, that for a missing table among them.
Result<bool> IFField(Database& DB, std::u16string_view TableName, std::u16string_view FieldName, std::int16_t Flag);

// Adds an index called `sInN` on the field `sF1` to the table `sTn`: not primary, not unique, nulls allowed, ascending.
// Kept: no error reaches the caller. A statement that fails is abandoned, for want of memory too, and the next one
// runs; a statement on an object that could not be had is skipped. So a missing table, a name in use, an unknown
// field and a read-only database leave the schema as it was.
//   CreateIndex(DB, u"Orders", u"ByDay", u"Day")
void CreateIndex(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1);

// Likewise on two fields, `sF1` then `sF2`.
// Kept: where a field is refused, the index is added with the other; so equal names give an index on one field.
//   CreateIndex2(DB, u"Orders", u"ByDayAndCity", u"Day", u"City")
void CreateIndex2(Database& DB, std::u16string_view sTn, std::u16string_view sInN, std::u16string_view sF1,
                  std::u16string_view sF2);

}  // namespace corvelle
