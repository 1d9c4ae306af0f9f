// text/substrings.h - parts of a text: the folder of a path, up to a marker, between two markers.
//
// Positions are 1-based; texts are compared character by character, exactly.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/function_ref.h"
#include "base/result.h"
#include "base/text.h"

namespace corvelle {

// What getStr_Pf of text/fields.h does, or what stands in for it: text, number, separator.
using FieldOperation = FunctionRef<Result<Text>(std::u16string_view, std::int16_t, std::u16string_view)>;

// The folder of `PathFile` with its trailing backslash: the path up to and including its last backslash.
//   GetPath(u"C:\\data\\a.mdb", …) == u"C:\\data\\", GetPath(u"file.txt", …) == u""
// A slash is an ordinary character.
// Kept: the folder is put together from the fields that backslashes end in `PathFile` and one more backslash;
// `get_field` is called for the first, the second and so on, once for each backslash in `PathFile`, and its error ends
// the call. Raises overflow (6) at 32,766 characters or more, since the added backslash is counted.
Result<Text> GetPath(std::u16string_view PathFile, FieldOperation get_field);

// `Str` up to and including the first `Flag` that does not start at position 1; empty where there is none.
//   Get_Str(u"abc.def", u".") == u"abc.", Get_Str(u".abc.def", u".") == u".abc.", Get_Str(u".x", u".") == u""
// An empty `Flag` is found at every position: the first character of a text of two or more.
// Raises overflow (6) at 32,767 characters or more, wherever `Flag` stands.
Result<Text> Get_Str(std::u16string_view Str, std::u16string_view Flag);

// The text between the first `Flag1` in `NewStr` and the next `Flag2`, to the end of the text without one, less any
// further `Flag1` in it; empty without a `Flag1` or with a `Flag2` before it.
//   getString_P(u"x[ab]y", u"[", u"]") == u"ab", getString_P(u"k=v", u"=", u";") == u"v"
// Kept: at each position `Flag1` is looked for first, so with two equal markers the closing one is skipped as another
// opening one. The character right behind a `Flag1` is always taken, unless a `Flag2` begins there: only every second
// of several in a row is skipped.
//   getString_P(u"x|abc|def", u"|", u"|") == u"abcdef", getString_P(u"[[a]", u"[", u"]") == u"[a"
// An empty `Flag1` is found at position 1, an empty `Flag2` right behind the first `Flag1`.
// Empty, and no error, where `NewStr` is spaces alone or `Flag1` followed by `Flag2`, and where the walk passes
// position 32,767; a longer text whose `Flag2` comes before that is no trouble. Never raises an error.
Result<Text> getString_P(std::u16string_view NewStr, std::u16string_view Flag1, std::u16string_view Flag2);

}  // namespace corvelle
