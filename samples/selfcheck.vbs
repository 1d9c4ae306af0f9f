' selfcheck.vbs - one known case of every operation, on this machine and in this script host.
'
'   cscript //nologo selfcheck.vbs RESULTS.TXT
'
' The cases are in data\selfcheck.txt. RESULTS.TXT gets a line for each, as Unicode text, since not every console takes
' texts of all languages. The exit code is 0 when all passed, 1 when not. This file is plain ASCII, so that every script
' host reads it alike.
Option Explicit
On Error Resume Next

Const kForReading = 1
Const kUnicode = -1

If WScript.Arguments.Count <> 1 Then
  WScript.Echo "usage: cscript selfcheck.vbs RESULTS.TXT"
  WScript.Quit 2
End If

Dim files, results, validate, application, grid, line, passed, failed
Set files = CreateObject("Scripting.FileSystemObject")
Set results = files.CreateTextFile(WScript.Arguments(0), True, True)
Set validate = CreateObject("Corvelle.ClsValidate")
If Err.Number <> 0 Then NotCreated "Corvelle.ClsValidate"
Set application = CreateObject("Corvelle.ClsVexApp")
If Err.Number <> 0 Then NotCreated "Corvelle.ClsVexApp"

passed = 0
failed = 0
For Each line In KnownCases()
  If Len(line) > 0 And Left(line, 1) <> ";" Then Check Split(line, "|")
Next
results.WriteLine passed & " passed, " & failed & " failed"
results.Close
WScript.Echo passed & " passed, " & failed & " failed"
If passed = 0 Or failed > 0 Then WScript.Quit 1
WScript.Quit 0

Sub NotCreated(name)
  results.WriteLine name & " cannot be created: error " & Err.Number & " " & Err.Description
  results.Close
  WScript.Echo name & " cannot be created. Is it registered for this script host's bitness?"
  WScript.Quit 1
End Sub

Function KnownCases()
  Dim file, text
  Set file = files.OpenTextFile(files.GetParentFolderName(WScript.ScriptFullName) & "\data\selfcheck.txt", kForReading, _
                                False, kUnicode)
  text = file.ReadAll
  file.Close
  KnownCases = Split(text, vbCrLf)
End Function

' A case is its operation, "gives" or "fails", what is expected, and the arguments.
Sub Check(parts)
  Dim known, arguments(4), i, result, came, right
  On Error Resume Next
  known = parts(0) & "("
  For i = 3 To UBound(parts)
    If i > 3 Then known = known & ", "
    known = known & parts(i)
    If parts(i) = "<Nothing>" Then
      Set arguments(i - 3) = Nothing
    ElseIf parts(i) = "<grid>" Then
      Set grid = New KnownGrid
      Set arguments(i - 3) = grid
    Else
      arguments(i - 3) = ArgumentOf(parts(i))
    End If
  Next
  known = known & ")"
  If parts(1) = "gives" Then
    known = known & " gives """ & parts(2) & """"
  Else
    known = known & " ends in error " & parts(2)
  End If
  Err.Clear
  result = ResultOf(parts(0), arguments)
  If Err.Number = 0 Then
    came = " gives """ & Shown(result) & """"
    right = (parts(1) = "gives" And Shown(result) = FilledIn(parts(2)))
  Else
    came = " ends in error " & Err.Number & " (" & Err.Description & ")"
    right = (parts(1) = "fails" And CStr(Err.Number) = parts(2))
  End If
  If right Then
    passed = passed + 1
    results.WriteLine "ok    " & known
  Else
    failed = failed + 1
    results.WriteLine "FAIL  " & known & "; here it" & came
  End If
End Sub

Function ArgumentOf(text)
  If Left(text, 8) = "<number " Then
    ArgumentOf = CDbl(Replace(Mid(text, 9), ">", ""))
  Else
    ArgumentOf = FilledIn(text)
  End If
End Function

' CStr would write True and False in the user's language.
Function Shown(value)
  Shown = CStr(value)
  If VarType(value) = vbBoolean Then
    Shown = "False"
    If value Then Shown = "True"
  End If
End Function

' What the list cannot know of a machine.
Function FilledIn(text)
  FilledIn = text
  If InStr(text, "<") = 0 Then Exit Function
  FilledIn = Replace(FilledIn, "<.>", Mid(CStr(1.5), 2, 1))
  FilledIn = Replace(FilledIn, "<this file>", WScript.ScriptFullName)
  If text = "<computer name>" Then
    FilledIn = CreateObject("WScript.Shell").ExpandEnvironmentStrings("%COMPUTERNAME%")
  End If
End Function

' Calls the operation of that name with as many arguments as its case has.
Function ResultOf(operation, a)
  Select Case operation
    Case "ClsValidate.sumByte_Pf": ResultOf = validate.sumByte_Pf(a(0))
    Case "ClsValidate.GetByte_Pf": ResultOf = validate.GetByte_Pf(a(0), a(1))
    Case "ClsValidate.getStr_Pf": ResultOf = validate.getStr_Pf(a(0), a(1), a(2))
    Case "ClsValidate.getStrDo_Pf": ResultOf = validate.getStrDo_Pf(a(0), a(1), a(2))
    Case "ClsValidate.Center": ResultOf = validate.Center(a(0))
    Case "ClsValidate.GetStr": ResultOf = validate.GetStr(a(0))
    Case "ClsValidate.is_AlphaNum": ResultOf = validate.is_AlphaNum(a(0))
    Case "ClsValidate.getNum": ResultOf = validate.getNum(a(0))
    Case "ClsValidate.Is_HuanZi": ResultOf = validate.Is_HuanZi(a(0))
    Case "ClsValidate.GetPath": ResultOf = validate.GetPath(a(0))
    Case "ClsValidate.Get_Str": ResultOf = validate.Get_Str(a(0), a(1))
    Case "ClsValidate.CharChange": ResultOf = validate.CharChange(a(0))
    Case "ClsValidate.getString_P": ResultOf = validate.getString_P(a(0), a(1), a(2))
    Case "ClsValidate.Get_String": ResultOf = validate.Get_String(a(0), a(1), a(2))
    Case "ClsValidate.Set_String1": ResultOf = validate.Set_String1(a(0), a(1), a(2))
    Case "ClsValidate.File_Find": ResultOf = validate.File_Find(a(0))
    Case "ClsValidate.IFTable": ResultOf = validate.IFTable(a(0), a(1))
    Case "ClsValidate.IFField": ResultOf = validate.IFField(a(0), a(1), a(2))
    Case "ClsValidate.dateToStr_Pf": ResultOf = validate.dateToStr_Pf(a(0))
    Case "ClsValidate.strDateFmt_Pf": ResultOf = validate.strDateFmt_Pf(a(0))
    Case "ClsValidate.CreateIndex2": validate.CreateIndex2 a(0), a(1), a(2), a(3), a(4)
    Case "ClsValidate.CreateIndex": validate.CreateIndex a(0), a(1), a(2), a(3)
    Case "ClsValidate.getDays_Pf": ResultOf = validate.getDays_Pf(a(0), a(1))
    Case "ClsValidate.GetDecimalFmt": ResultOf = validate.GetDecimalFmt(a(0))
    Case "ClsValidate.GetDecimalFmt_4": ResultOf = validate.GetDecimalFmt_4(a(0))
    Case "ClsValidate.GetDecimalFmt_8": ResultOf = validate.GetDecimalFmt_8(a(0))
    Case "ClsValidate.GetDecimalFmt_Bus": ResultOf = validate.GetDecimalFmt_Bus(a(0), a(1))
    Case "ClsValidate.SetGrdCenter": validate.SetGrdCenter a(0): ResultOf = grid.Notes
    Case "ClsValidate.SetGrdAlign": validate.SetGrdAlign a(0), a(1): ResultOf = grid.Notes
    Case "ClsValidate.ClearGrd": validate.ClearGrd a(0): ResultOf = grid.Notes
    Case "ClsValidate.Get_String_PY": ResultOf = validate.Get_String_PY(a(0))
    Case "ClsValidate.Get_StrWidth": ResultOf = validate.Get_StrWidth(a(0))
    Case "ClsValidate.GetComputerNm": ResultOf = validate.GetComputerNm()
    Case "ClsVexApp.GetComputerNm": ResultOf = application.GetComputerNm()
    Case "ClsVexApp.Replace_Str": ResultOf = application.Replace_Str(a(0), a(1), a(2))
    Case "ClsVexApp.ConversionStr_Long": ResultOf = application.ConversionStr_Long(a(0))
    Case "ClsVexApp.ConversionStr_Short": ResultOf = application.ConversionStr_Short(a(0))
    Case "ClsVexApp.Set_Str": ResultOf = application.Set_Str(a(0))
    Case "ClsVexApp.Get_Str": ResultOf = application.Get_Str()
    Case Else: Err.Raise 438
  End Select
End Function

' A grid of three columns that notes what is assigned to it.
Class KnownGrid
  Private written

  Public Property Get Notes
    Notes = Mid(written, 2)
  End Property
  Public Property Get Cols
    Cols = 3
  End Property
  Public Property Let Rows(value)
    Note "Rows", value
  End Property
  Public Property Let Row(value)
    Note "Row", value
  End Property
  Public Property Let Col(value)
    Note "Col", value
  End Property
  Public Property Let CellAlignment(value)
    Note "CellAlignment", value
  End Property
  Public Property Let ColAlignment(atCol, value)
    Note "ColAlignment(" & atCol & ")", value
  End Property
  Public Property Let TextMatrix(atRow, atCol, value)
    Note "TextMatrix(" & atRow & "," & atCol & ")", value
  End Property
  Private Sub Note(member, value)
    written = written & " " & member & "=" & value
  End Sub
End Class
