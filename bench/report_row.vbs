' A row of a report, by the component and by VBScript alone: six fields split, six columns padded, two numbers and a
' date formatted. Prints one line for scripts/bench, after both have made the same row.
Option Explicit

Const kRows = 2000
Const kRounds = 5
Dim widths: widths = Array(8, 24, 14, 12, 12, 20)

' Chinese by its codes, so that every script host reads this file alike: hex bolts, zinc plated.
Dim rowText: rowText = "1001," & Chr(&hC1F9) & Chr(&hBDC7) & Chr(&hC2DD) & Chr(&hCBA8) & " M8x40,1250.5,3.75,20060102," & _
  Chr(&hB6C6) & Chr(&hD0BF) & ","

Dim validate: Set validate = CreateObject("Corvelle.ClsValidate")

Function RowByComponent()
  Dim i, field, row
  For i = 0 To 5
    field = validate.getStr_Pf(rowText, i + 1, ",")
    If i = 2 Or i = 3 Then field = validate.GetDecimalFmt_Bus(field, 2)
    If i = 4 Then field = validate.strDateFmt_Pf(field, "--")
    row = row & validate.Set_String1(field, widths(i), 0)
  Next
  RowByComponent = row
End Function

Function PaddedAlone(text, width)
  Dim i, columns
  columns = 0
  For i = 1 To Len(text)
    If Asc(Mid(text, i, 1)) < 0 Then columns = columns + 2 Else columns = columns + 1
  Next
  PaddedAlone = text & Space(width - columns)
End Function

Function RowAlone()
  Dim i, fields, field, row
  fields = Split(rowText, ",")
  For i = 0 To 5
    field = fields(i)
    If i = 2 Or i = 3 Then field = FormatNumber(CDbl(field), 2, -1, 0, 0)
    If i = 4 Then field = Left(field, 4) & "-" & Mid(field, 5, 2) & "-" & Mid(field, 7, 2)
    row = row & PaddedAlone(field, widths(i))
  Next
  RowAlone = row
End Function

Function MicrosecondsByComponent()
  Dim i, row, start
  start = Timer
  For i = 1 To kRows: row = RowByComponent(): Next
  MicrosecondsByComponent = (Timer - start) * 1000000 / kRows
End Function

Function MicrosecondsAlone()
  Dim i, row, start
  start = Timer
  For i = 1 To kRows: row = RowAlone(): Next
  MicrosecondsAlone = (Timer - start) * 1000000 / kRows
End Function

Dim turn, spent, bestOfComponent, bestAlone
If RowByComponent() <> RowAlone() Then
  WScript.Echo "the rows differ"
  WScript.Quit 1
End If
bestOfComponent = 1000000
bestAlone = 1000000
For turn = 1 To kRounds
  spent = MicrosecondsByComponent()
  If spent < bestOfComponent Then bestOfComponent = spent
  spent = MicrosecondsAlone()
  If spent < bestAlone Then bestAlone = spent
Next
WScript.Echo "ratio" & vbTab & "report row" & vbTab & "six fields" & vbTab & "VBScript alone" & vbTab & _
  CStr(bestOfComponent * 1000) & vbTab & CStr(bestAlone * 1000)
