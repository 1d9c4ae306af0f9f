On Error Resume Next
Dim zero, text, format

x = Replace(TypeName(validate), "_", "") : Gives "ClsValidate", "the object says what it is (Wine shows its interface's name)"
x = Replace(TypeName(application), "_", "") : Gives "ClsVexApp", "and so does the other"

' Display width
x = validate.sumByte_Pf(T("mixed"))              : Gives CDbl(3), "a double-byte character takes two columns"
x = validate.GetByte_Pf(T("mixed"), 0)           : Gives CInt(3), "as a 16-bit integer, too"
x = validate.Get_StrWidth(T("mixed"))            : Gives "3", "as text, too"
x = validate.GetByte_Pf(T("euro"), 0)            : Gives CInt(1), "the euro sign is a single byte"
x = validate.GetByte_Pf(T("outside the code page"), 0) : Gives CInt(2), "a character outside the code page takes one column"
x = validate.GetByte_Pf("", 0)                   : Gives CInt(0), "the empty text has no width"
x = validate.GetByte_Pf(String(32766, "a"), 0)   : Gives CInt(32766), "the longest text that can be measured"
x = validate.GetByte_Pf(String(32767, "a"), 0)   : Fails 6, "GetByte_Pf", "vStr", "a longer text overflows"
x = validate.sumByte_Pf(String(40000, "a"))      : Fails 6, "sumByte_Pf", "vStr", "a much longer one does, too"
x = validate.Get_StrWidth("abc")                 : Gives "3", "a call after a failure is a call like any other"

' How arguments arrive
zero = 0
text = T("mixed")
x = validate.GetByte_Pf(text, zero)              : Gives CInt(3), "variables go by reference and arrive by value"
x = text                                         : Gives T("mixed"), "and stay as they were"
x = validate.GetByte_Pf(12345, "7")              : Gives CInt(5), "a number becomes its text, a text a number"
x = validate.GetByte_Pf(Empty, Empty)            : Gives CInt(0), "an empty variant is the empty text and zero"
x = validate.getbyte_pf("abc", 0)                : Gives CInt(3), "names are found without regard to case"
x = validate.GetByte_Pf("abc", "seven")          : Refused 13, "a text that is no number does not fit a number"
x = validate.GetByte_Pf("abc", 70000)            : Refused 13, "nor does a number that needs more than 16 bits"
x = validate.GetByte_Pf(validate, 0)             : Refused 13, "nor does an object a text"
x = validate.GetByte_Pf("abc")                   : Refused 450, "an argument is missing"
x = validate.GetByte_Pf("abc", 0, 0)             : Refused 450, "an argument is too many"
x = validate.GetBytes("abc", 0)                  : Refused 438, "no such operation"
x = application.GetByte_Pf("abc", 0)             : Refused 438, "an operation of the other class"

' Objects that take away what a call was given
Class Changer
  Public Default Property Get Value()
    fields = String(60, "z")
    Value = 2
  End Property
End Class
Class Holder
  Public Held
  Public Default Property Get Value()
    Set Held = Nothing
    Value = 2
  End Property
End Class
Dim fields, changer, holder
Set changer = New Changer
Set holder = New Holder
fields = "one,two,three,"
x = validate.getStr_Pf(fields, changer, ",")     : Gives "two", "a text is what it was when the call began"
x = fields                                       : Gives String(60, "z"), "although its variable has another by then"
fields = String(3000000, ",")
x = validate.getStrDo_Pf(fields, changer, ",")   : Gives "", "a long one, too"
Set holder.Held = CreateObject("Corvelle.ClsValidate")
x = holder.Held.getStr_Pf("one,two,", holder, ",") : Gives "two", "the last reference goes while the call runs"

' Character classes
x = validate.is_AlphaNum("AbC")                  : Gives True, "letters only"
x = validate.is_AlphaNum("a1")                   : Gives False, "a digit is no letter"
x = validate.Is_HuanZi("ABC123")                 : Gives False, "letters and digits only"
x = validate.Is_HuanZi(T("mixed"))               : Gives True, "a Chinese character is neither"
x = validate.getNum("a1b2c3")                    : Gives "123", "the digits of a text"
x = validate.getNum(-12.5)                       : Gives "125", "the digits of a number"
x = validate.CharChange(T("numerals"))           : Gives "3105", "Chinese numerals in digits"
x = validate.CharChange(T("range"))              : Gives "1-3", "a range"
x = validate.CharChange("1/2")                   : Gives T("enumeration"), "a separator becomes the enumeration comma"

' Fields
x = validate.Set_String1("ab", 5)                : Gives "ab   ", "Flag left out aligns left"
x = validate.Set_String1("ab", 5, 1)             : Gives "   ab", "Flag aligns right"
x = validate.Set_String1(T("mixed"), 5)          : Gives T("mixed") & "  ", "padding counts columns"
x = validate.Set_String1("", -1)                 : Fails 5, "Set_String1", "lngLen", "a negative count of spaces"
x = validate.Set_String1("ab")                   : Refused 450, "only Flag may be left out"
x = validate.Get_String(T("Chinese word"), 1, 4) : Gives Left(T("Chinese word"), 2), "a range of columns"
x = validate.Get_String("abc", 1, 40000)         : Fails 6, "Get_String", "LngEnd", "an end that the counter cannot reach"
x = validate.getStr_Pf("a,b,c,", 2, ",")         : Gives "b", "the second field"
x = validate.getStr_Pf("a,b,c,", 4, ",")         : Fails 5, "getStr_Pf", "Num", "a field that is not there"
x = validate.getStrDo_Pf("a,b,c", 3, ",")        : Gives ",", "where getStr_Pf fails, the separator"
x = validate.Center(" a b ")                     : Gives "ab", "without spaces"
x = validate.GetStr("a-1 b")                     : Gives "ab", "letters only"

' Dates
format = T("year and month marks")
x = validate.dateToStr_Pf(DateSerial(2006, 1, 2)) : Gives "20060102", "a date as digits"
x = validate.dateToStr_Pf(3000000)               : Refused 13, "a number beyond the last date is none"
x = validate.strDateFmt_Pf("20060102")           : Gives T("date with default marks"), "the default marks"
x = validate.strDateFmt_Pf("20060102", "--")     : Gives "2006-01-02", "a constant for the by-reference argument"
x = validate.strDateFmt_Pf("20060102", format)   : Gives T("date without a day mark"), "a variable for the by-reference argument"
x = format                                       : Gives T("year and month marks"), "which stays as it was"
x = validate.strDateFmt_Pf("20060102", 12)       : Gives "2006101202", "a number for the by-reference text"
x = validate.getDays_Pf(2000, 2)                 : Gives CInt(29), "February of a leap year"
x = validate.getDays_Pf(, 4)                     : Gives CInt(30), "the first argument left out"
x = validate.getDays_Pf()                        : Gives CInt(Day(DateSerial(Year(Date), Month(Date) + 1, 0))), "all left out: this month"

' Parts of texts
x = validate.GetPath(T("path"))                  : Gives T("folder of the path"), "a path without its file"
x = validate.Get_Str("ab,cd", ",")               : Gives "ab,", "up to and including the separator"
x = validate.getString_P("a[b]c", "[", "]")      : Gives "b", "what two marks enclose"
x = validate.getString_P("abc", "[", "]")        : Gives "", "nothing is enclosed"
x = application.Replace_Str("--", "-", "+")      : Gives "-+", "the last one is replaced"
x = application.ConversionStr_Short(application.ConversionStr_Long(T("mixed"))) : Gives T("mixed"), "there and back"
x = application.Set_Str(T("mixed"))              : Gives Empty, "the text slot takes a text and answers nothing"
x = application.Get_Str()                        : Gives T("mixed"), "and gives it back"
x = CreateObject("Corvelle.ClsVexApp").Get_Str() : Gives T("mixed"), "to every object of the thread"
x = validate.Get_String_PY(T("mixed"))           : Gives "", "no initials in this release"

' Numbers
x = validate.GetDecimalFmt("3.14159")            : Gives "", "always the empty text"
x = validate.GetDecimalFmt_4("0.03125")          : Gives "0.0313", "halves go away from zero"
x = validate.GetDecimalFmt_4(-0.5)               : Gives "-0.5000", "a number arrives as its text"
x = validate.GetDecimalFmt_8("3.14159")          : Gives "3.14159000", "eight decimals"
x = validate.GetDecimalFmt_Bus("2.5", 2)         : Gives "2.50", "as many decimals as the index says"
x = validate.GetDecimalFmt_Bus("2.5", 9)         : Gives "2.5", "an index without a pattern"
x = validate.GetDecimalFmt_4("12abc")            : Gives "12abc", "a text that is no number"

' A grid that is a class of the script, and notes what is assigned to it
Class NotingGrid
  Public Notes
  Public Cols
  Public Property Let Rows(count)
    Note "Rows=" & count
  End Property
  Public Property Let Row(number)
    Note "Row=" & number
  End Property
  Public Property Let Col(number)
    Note "Col=" & number
  End Property
  Public Property Let CellAlignment(alignment)
    Note "CellAlignment=" & alignment
  End Property
  Public Property Let ColAlignment(number, alignment)
    Note "ColAlignment(" & number & ")=" & alignment
    wanted = alignment + 1
  End Property
  Public Property Let TextMatrix(atRow, atCol, text)
    Note "TextMatrix(" & atRow & "," & atCol & ")=" & text & TypeName(text)
  End Property
  Public Function Taken()
    Taken = Notes
    Notes = ""
  End Function
  Private Sub Note(assignment)
    Notes = Notes & assignment & " "
  End Sub
End Class
Dim grid, wanted
Set grid = New NotingGrid
grid.Cols = 2
x = validate.SetGrdCenter(grid)                  : Gives Empty, "a script's own grid is centred"
x = grid.Taken()                                 : Gives "Row=0 Col=0 CellAlignment=4 Col=1 CellAlignment=4 ", "cell by cell"
x = validate.SetGrdAlign(grid)                   : Gives Empty, "and aligned"
x = grid.Taken()                                 : Gives "ColAlignment(0)=1 ColAlignment(1)=1 ", "by 1 where nothing is said"
x = validate.SetGrdAlign(grid, 7)                : Gives Empty, "or by a number"
x = grid.Taken()                                 : Gives "ColAlignment(0)=7 ColAlignment(1)=7 ", "for every column"
wanted = 3
x = validate.SetGrdAlign(grid, wanted)           : Gives Empty, "or by a variable, which the grid changes"
x = grid.Taken()                                 : Gives "ColAlignment(0)=3 ColAlignment(1)=4 ", "and which is read for each column"
x = validate.ClearGrd(grid)                      : Gives Empty, "and cleared"
x = grid.Taken()                                 : Gives "Rows=200 TextMatrix(1,0)=String TextMatrix(1,1)=String ", "in row 1"

' Objects that are not what an operation needs
x = validate.SetGrdCenter("a text")              : Fails 424, "SetGrdCenter", "Msfg", "a text is no grid"
x = validate.SetGrdAlign(Empty)                  : Fails 424, "SetGrdAlign", "Msfg", "nor is an empty variant; intAlign is left out"
x = validate.ClearGrd(application)               : Fails 438, "ClearGrd", "Rows", "an object without a grid's members"
x = validate.IFTable(application, "Orders")      : Refused 13, "an object that is no database"
x = validate.IFTable(Nothing, "Orders")          : Fails 91, "IFTable", "DB", "no database at all"

' Files and machine
x = validate.File_Find("  " & WScript.ScriptFullName & " ") : Gives True, "this very script"
x = validate.File_Find("   ")                    : Gives False, "spaces name no file"
x = validate.GetComputerNm()                     : Gives application.GetComputerNm(), "both classes say the computer's name alike"
