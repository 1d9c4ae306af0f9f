' What the VBScript tests share; the runner puts it in front of each. Sources are ASCII: script hosts read them in the
' machine's code page. Other characters come from texts.txt, by T("name").
'
' A row calls, then says what must have come of it:
'   x = validate.GetByte_Pf("ab", 0) : Gives 2, "a column each"
Option Explicit
Dim files, results, known, x, checked, failed
Set files = CreateObject("Scripting.FileSystemObject")
Set results = files.CreateTextFile(WScript.Arguments(1), True, True)
Set known = CreateObject("Scripting.Dictionary")
checked = 0
failed = 0
ReadTexts WScript.Arguments(0)

Dim validate, application
Set validate = CreateObject("Corvelle.ClsValidate")
Set application = CreateObject("Corvelle.ClsVexApp")

Sub ReadTexts(path)
  Dim file, line, mark
  Set file = files.OpenTextFile(path, 1, False, -1)
  Do Until file.AtEndOfStream
    line = file.ReadLine
    mark = InStr(line, "=")
    known.Add Left(line, mark - 1), Mid(line, mark + 1)
  Loop
  file.Close
End Sub

Function T(name)
  If Not known.Exists(name) Then WScript.Quit 3
  T = known.Item(name)
End Function

' The call succeeded with exactly this value, of this type.
Sub Gives(expected, reason)
  Dim right
  right = False
  If Err.Number = 0 And TypeName(x) = TypeName(expected) Then right = (x = expected)
  If IsEmpty(expected) Then right = (Err.Number = 0 And IsEmpty(x))
  Report right, reason
End Sub

' The operation itself failed: the description names the operation and the argument, the source the class.
Sub Fails(number, operation, argument, reason)
  Dim right
  right = (Err.Number = number And Err.Source = "Corvelle.ClsValidate")
  If InStr(Err.Description, operation) = 0 Or InStr(Err.Description, argument) = 0 Then right = False
  Report right, reason & " (" & Err.Description & ")"
End Sub

' The host's own error: the operation did not run.
Sub Refused(number, reason)
  Report Err.Number = number And IsEmpty(x), reason
End Sub

Sub Report(right, reason)
  Dim line
  checked = checked + 1
  If right Then
    line = "ok    " & reason
  Else
    failed = failed + 1
    line = "FAIL  " & reason & ": got " & Shown(x) & ", error " & Err.Number & " of " & Err.Source & ": " & Err.Description
  End If
  results.WriteLine line
  Err.Clear
  x = Empty
End Sub

Function Shown(value)
  Shown = TypeName(value)
  If Not IsObject(value) And Not IsNull(value) Then Shown = Shown & " """ & value & """"
End Function

Sub Finish()
  results.WriteLine checked & " checked, " & failed & " failed"
  results.Close
  WScript.Quit failed
End Sub
