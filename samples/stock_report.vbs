' stock_report.vbs - a stock list with Chinese and ASCII text as a table whose columns line up, with exact totals.
'
'   cscript //nologo stock_report.vbs STOCK.CSV REPORT.TXT
'
' STOCK.CSV is text of code page 936, the ANSI code page of the machines that this is for: a row of headings, then a
' row for each kind of goods, every field ended by a comma. REPORT.TXT is written as Unicode text; it goes to a file
' because not every console takes double-byte text. This file is plain ASCII, so that every script host reads it alike.
Option Explicit

Const kForReading = 1
Const kSeparator = ","
Const kRightAligned = 1

' What a row of the table holds, in this order, and how many display columns each gets.
Const kCode = 0
Const kName = 1
Const kNameWidth = 2
Const kQuantity = 3
Const kPrice = 4
Const kAmount = 5
Const kDay = 6
Const kPlace = 7
Dim widths
widths = Array(4, 28, 5, 9, 10, 9, 14, 10)

Dim validate, files
Set validate = CreateObject("Corvelle.ClsValidate")
Set files = CreateObject("Scripting.FileSystemObject")

If WScript.Arguments.Count <> 2 Then
  WScript.Echo "usage: cscript stock_report.vbs STOCK.CSV REPORT.TXT"
  WScript.Quit 2
End If
WriteReport ReadLines(WScript.Arguments(0)), WScript.Arguments(1)

Function ReadLines(path)
  Dim file, text
  Set file = files.OpenTextFile(path, kForReading)
  text = file.ReadAll
  file.Close
  Do While Right(text, 2) = vbCrLf
    text = Left(text, Len(text) - 2)
  Loop
  ReadLines = Split(text, vbCrLf)
End Function

Sub WriteReport(lines, path)
  Dim out, goods, i
  ReDim goods(UBound(lines) - 1)
  For i = 1 To UBound(lines)
    goods(i - 1) = GoodsOf(lines(i))
  Next
  Set out = files.CreateTextFile(path, True, True)
  WriteTitle out
  WriteTable out, HeadingsOf(lines(0)), goods
  WriteTotals out, goods
  out.Close
End Sub

' ---- One row ----

Function HeadingsOf(line)
  HeadingsOf = Array(FieldOf(line, 1), FieldOf(line, 2), "Width", FieldOf(line, 3), FieldOf(line, 4), "Amount", _
                     FieldOf(line, 5), FieldOf(line, 6))
End Function

Function GoodsOf(line)
  Dim name, quantity, price
  name = FieldOf(line, 2)
  quantity = validate.CharChange(FieldOf(line, 3))
  price = FieldOf(line, 4)
  GoodsOf = Array(FieldOf(line, 1), name, validate.Get_StrWidth(name), validate.GetDecimalFmt_Bus(quantity, 2), _
                  validate.GetDecimalFmt_4(price), AmountOf(quantity, price), validate.strDateFmt_Pf(FieldOf(line, 5)), _
                  validate.CharChange(FieldOf(line, 6)))
End Function

Function FieldOf(line, number)
  FieldOf = validate.getStr_Pf(line, number, kSeparator)
End Function

' Quantity times price to the last digit, Empty where the price is not settled. Currency has four decimal places, as
' the prices have, and is exact.
Function AmountOf(quantity, price)
  AmountOf = Empty
  If IsNumeric(price) Then AmountOf = CCur(quantity) * CCur(price)
End Function

' ---- The report ----

Sub WriteTitle(out)
  Dim day
  day = validate.dateToStr_Pf(DateSerial(2006, 6, validate.getDays_Pf(2006, 6)))
  out.WriteLine "Stock of " & validate.strDateFmt_Pf(day, "--") & " (" & validate.strDateFmt_Pf(day) & ")"
End Sub

Sub WriteTable(out, headings, goods)
  Dim row
  WriteRule out
  WriteRow out, headings
  WriteRule out
  For Each row In goods
    WriteGoods out, row
  Next
  WriteRule out
End Sub

Sub WriteRule(out)
  Dim width, rule
  rule = "+"
  For Each width In widths
    rule = rule & String(width + 2, "-") & "+"
  Next
  out.WriteLine rule
End Sub

' A name too wide for its column goes on in the lines below.
Sub WriteGoods(out, goods)
  Dim name, row
  row = goods
  name = row(kName)
  row(kName) = HeadOf(name)
  row(kAmount) = ShownAmount(row(kAmount))
  WriteRow out, row
  Do While Len(name) > Len(HeadOf(name))
    name = Mid(name, Len(HeadOf(name)) + 1)
    WriteRow out, Array("", HeadOf(name), "", "", "", "", "", "")
  Loop
End Sub

' As much of a name as fits its column. Get_String keeps a character whole that straddles the end, hence one less.
Function HeadOf(name)
  HeadOf = name
  If validate.GetByte_Pf(name, 0) > widths(kName) Then HeadOf = validate.Get_String(name, 1, widths(kName) - 1)
End Function

Function ShownAmount(amount)
  ShownAmount = ""
  If Not IsEmpty(amount) Then ShownAmount = validate.GetDecimalFmt_Bus(CStr(amount), 2)
End Function

Sub WriteRow(out, row)
  Dim line, i
  line = "|"
  For i = kCode To kPlace
    If i >= kNameWidth And i <= kAmount Then
      line = line & " " & validate.Set_String1(row(i), widths(i), kRightAligned) & " |"
    Else
      line = line & " " & validate.Set_String1(row(i), widths(i)) & " |"
    End If
  Next
  out.WriteLine line
End Sub

Sub WriteTotals(out, goods)
  Dim row, total, settled, widest
  total = CCur(0)
  settled = 0
  widest = goods(0)
  For Each row In goods
    If Not IsEmpty(row(kAmount)) Then
      total = total + row(kAmount)
      settled = settled + 1
    End If
    If CInt(row(kNameWidth)) > CInt(widest(kNameWidth)) Then widest = row
  Next
  out.WriteLine UBound(goods) + 1 & " kinds of goods, " & settled & " of them with a price, worth " & _
                validate.GetDecimalFmt_4(CStr(total)) & " in all"
  out.WriteLine "The widest name takes " & widest(kNameWidth) & " columns: " & widest(kName)
End Sub
