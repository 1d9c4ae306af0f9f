' stock_report.vbs - a stock list with Chinese and ASCII text as a table whose columns line up, with exact totals; then
' the first goods in a grid before and after the component has aligned and cleared it, and what it says of files and
' of the machine.
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

' The grid, and a flex grid's alignments.
Const kGridRows = 5
Const kGridCols = 4
Const kGridColumnWidth = 16
Const kRightCentre = 7
Const kGeneral = 9

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
If Not validate.File_Find(WScript.Arguments(0)) Then
  WScript.Echo "There is no such file: " & WScript.Arguments(0)
  WScript.Quit 1
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
  WriteGrids out, GridOf(lines)
  WriteMachine out
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

' ---- The grid ----

' A grid of the host's own. The component drives it by the names of these members, as it would a flex grid control.
Class Grid
  Public Rows
  Public Cols
  Public Row
  Public Col
  Private texts
  Private cells
  Private columns

  Private Sub Class_Initialize
    Set texts = CreateObject("Scripting.Dictionary")
    Set cells = CreateObject("Scripting.Dictionary")
    Set columns = CreateObject("Scripting.Dictionary")
    Row = 0
    Col = 0
  End Sub

  Public Property Get TextMatrix(atRow, atCol)
    TextMatrix = texts(atRow & "," & atCol)
  End Property
  Public Property Let TextMatrix(atRow, atCol, text)
    texts(atRow & "," & atCol) = text
  End Property

  Public Property Get ColAlignment(atCol)
    ColAlignment = columns(CStr(atCol))
  End Property
  Public Property Let ColAlignment(atCol, alignment)
    columns(CStr(atCol)) = alignment
  End Property

  Public Property Get CellAlignment
    CellAlignment = ShownAlignment(Row, Col)
  End Property
  Public Property Let CellAlignment(alignment)
    cells(Row & "," & Col) = alignment
  End Property

  ' The cell's own alignment, or else its column's.
  Public Function ShownAlignment(atRow, atCol)
    If cells.Exists(atRow & "," & atCol) Then
      ShownAlignment = cells(atRow & "," & atCol)
    Else
      ShownAlignment = columns(CStr(atCol))
    End If
  End Function
End Class

' The headings and the first goods, every column aligned as its content wants it.
Function GridOf(lines)
  Dim filled, r, c
  Set filled = New Grid
  filled.Rows = kGridRows
  filled.Cols = kGridCols
  For c = 0 To kGridCols - 1
    filled.ColAlignment(c) = kGeneral
    For r = 0 To kGridRows - 1
      filled.TextMatrix(r, c) = FieldOf(lines(r), c + 1)
    Next
  Next
  Set GridOf = filled
End Function

Sub WriteGrids(out, shown)
  WriteGrid out, "A grid, as the host has filled it", shown
  validate.SetGrdCenter shown
  validate.SetGrdAlign shown, kRightCentre
  WriteGrid out, "The grid after SetGrdCenter and SetGrdAlign 7", shown
  validate.ClearGrd shown
  WriteGrid out, "The grid after ClearGrd", shown
End Sub

Sub WriteGrid(out, title, shown)
  Dim r
  out.WriteLine
  out.WriteLine title & ": " & shown.Rows & " rows, the current cell is " & shown.Row & "," & shown.Col
  For r = 0 To kGridRows - 1
    out.WriteLine GridLine(shown, r)
  Next
End Sub

Function GridLine(shown, r)
  Dim c
  GridLine = "|"
  For c = 0 To shown.Cols - 1
    GridLine = GridLine & " " & Aligned(shown.TextMatrix(r, c), shown.ShownAlignment(r, c)) & " |"
  Next
End Function

' A flex grid's alignments are left, centre and right, three of each for the heights; then comes its own choice, left.
Function Aligned(text, alignment)
  Dim free
  free = kGridColumnWidth - validate.GetByte_Pf(text, 0)
  Select Case alignment \ 3
    Case 1: Aligned = Space(free \ 2) & validate.Set_String1(text, kGridColumnWidth - free \ 2)
    Case 2: Aligned = validate.Set_String1(text, kGridColumnWidth, kRightAligned)
    Case Else: Aligned = validate.Set_String1(text, kGridColumnWidth)
  End Select
End Function

' ---- Files and the machine ----

Sub WriteMachine(out)
  Dim folder
  folder = validate.GetPath(WScript.Arguments(0))
  out.WriteLine
  out.WriteLine "Beside the stock list: " & Found(folder & "*.csv") & " files *.csv, " & Found(folder & "*.mdb") & _
                " files *.mdb"
  out.WriteLine "Made on the computer " & validate.GetComputerNm
End Sub

Function Found(pattern)
  Found = "no"
  If validate.File_Find(pattern) Then Found = "some"
End Function
