// Display width
gives(3, function () { return validate.sumByte_Pf(T("mixed")); }, "a double-byte character takes two columns");
gives(3, function () { return validate.GetByte_Pf(T("mixed"), 0); }, "as a 16-bit integer, too");
gives("3", function () { return validate.Get_StrWidth(T("mixed")); }, "as text, too");
gives(1, function () { return validate.GetByte_Pf(T("euro"), 0); }, "the euro sign is a single byte");
gives(2, function () { return validate.GetByte_Pf("\ud83d\ude00", 0); }, "a surrogate pair is two characters of one column");
gives(2, function () { return validate.GetByte_Pf("\u0000a", 0); }, "NUL is a character like any other");
gives(0, function () { return validate.GetByte_Pf("", 0); }, "the empty text has no width");
gives(32766, function () { return validate.GetByte_Pf(repeated("a", 32766), 0); }, "the longest text that can be measured");
fails(6, "GetByte_Pf", "vStr", function () { return validate.GetByte_Pf(repeated("a", 32767), 0); }, "a longer text overflows");
gives("3", function () { return validate.Get_StrWidth("abc"); }, "a call after a failure is a call like any other");

// How arguments arrive
gives(5, function () { return validate.GetByte_Pf(12345, "7"); }, "a number becomes its text, a text a number");
gives(0, function () { return validate.GetByte_Pf(undefined, undefined); }, "undefined is the empty text and zero");
gives(3, function () { return validate.getbyte_pf("abc", 0); }, "names are found without regard to case");
refused(13, function () { return validate.GetByte_Pf("abc", "seven"); }, "a text that is no number does not fit a number");
refused(13, function () { return validate.GetByte_Pf("abc", 70000); }, "nor does a number that needs more than 16 bits");
refused(450, function () { return validate.GetByte_Pf("abc"); }, "an argument is missing");
refused(450, function () { return validate.GetByte_Pf("abc", 0, 0); }, "an argument is too many");
refused(438, function () { return validate.GetBytes("abc", 0); }, "no such operation");
refused(438, function () { return application.GetByte_Pf("abc", 0); }, "an operation of the other class");

// Character classes
gives(true, function () { return validate.is_AlphaNum("AbC"); }, "letters only");
gives(true, function () { return validate.Is_HuanZi(T("mixed")); }, "a Chinese character is neither letter nor digit");
gives("125", function () { return validate.getNum(-12.5); }, "the digits of a number");
gives("3105", function () { return validate.CharChange(T("numerals")); }, "Chinese numerals in digits");

// Fields
gives("ab   ", function () { return validate.Set_String1("ab", 5); }, "Flag left out aligns left");
gives("   ab", function () { return validate.Set_String1("ab", 5, true); }, "Flag aligns right, whatever it is but 0");
fails(5, "Set_String1", "lngLen", function () { return validate.Set_String1("", -1); }, "a negative count of spaces");
gives("b", function () { return validate.getStr_Pf("a,b,c,", 2, ","); }, "the second field");
fails(5, "getStr_Pf", "Num", function () { return validate.getStr_Pf("a,b,c,", 4, ","); }, "a field that is not there");
gives(",", function () { return validate.getStrDo_Pf("a,b,c", 3, ","); }, "where getStr_Pf fails, the separator");

// Dates
gives("20060102", function () { return validate.dateToStr_Pf(38719.5); }, "the number of a date");
gives(T("date with default marks"), function () { return validate.strDateFmt_Pf("20060102"); }, "the default marks");
gives("2006-01-02", function () { return validate.strDateFmt_Pf("20060102", "--"); }, "marks of one's own");
gives(29, function () { return validate.getDays_Pf(2000, 2); }, "February of a leap year");

// Parts of texts
gives(T("folder of the path"), function () { return validate.GetPath(T("path")); }, "a path without its file");
gives("b", function () { return validate.getString_P("a[b]c", "[", "]"); }, "what two marks enclose");
gives("a\u0000b", function () { return application.ConversionStr_Short(application.ConversionStr_Long("a\u0000b")); }, "there and back");
gives(undefined, function () { return application.Set_Str("\ud800"); }, "the text slot takes any text and answers nothing");
gives("\ud800", function () { return application.Get_Str(); }, "and gives it back");

// Numbers
gives("0.0313", function () { return validate.GetDecimalFmt_4("0.03125"); }, "halves go away from zero");
gives("2.50", function () { return validate.GetDecimalFmt_Bus(2.5, 2); }, "as many decimals as the index says");

// Objects that are not what an operation needs
fails(424, "SetGrdCenter", "Msfg", function () { return validate.SetGrdCenter("a text"); }, "a text is no grid");
fails(438, "ClearGrd", "Rows", function () { return validate.ClearGrd(application); }, "an object without a grid's members");
refused(13, function () { return validate.IFTable(application, "Orders"); }, "an object that is no database");

// Files and machine
gives(true, function () { return validate.File_Find(WScript.ScriptFullName); }, "this very script");
gives(application.GetComputerNm(), function () { return validate.GetComputerNm(); }, "both classes say the computer's name alike");
