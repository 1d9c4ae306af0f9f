' The frame of the script that runs the examples of the reference; the runner puts their definitions behind it, then
' a line or two for each. Everything that an example comes to is noted in a Unicode text file under its number.
Dim files, results, validate, application, database, grid, x
Set files = CreateObject("Scripting.FileSystemObject")
Set results = files.CreateTextFile(WScript.Arguments(0), True, True)
Set validate = CreateObject("Corvelle.ClsValidate")
Set application = CreateObject("Corvelle.ClsVexApp")
Set database = CreateObject("Corvelle.ExampleDatabase")
Set grid = CreateObject("Corvelle.ExampleGrid")

Dim texts
texts = Split(files.OpenTextFile(WScript.Arguments(1), 1, False, -1).ReadAll, vbCrLf)

' A text that is no ASCII.
Function T(number)
  T = texts(number - 1)
End Function

' Notes what x, or the error of the last line, is.
Sub Note(number)
  Dim outcome
  outcome = Shown(x)
  If Err.Number <> 0 Then outcome = "error " & Err.Number & vbTab & Err.Description
  results.WriteLine number & vbTab & outcome
  Err.Clear
  x = Empty
End Sub

' A value as the pages write it.
Function Shown(value)
  Select Case TypeName(value)
    Case "String" Shown = """" & Replace(value, """", """""") & """"
    Case "Boolean" If value Then Shown = "True" Else Shown = "False"
    Case "Empty" Shown = "Empty"
    Case "Integer", "Long", "Double" Shown = CStr(value)
    Case Else Shown = "a value of type " & TypeName(value)
  End Select
End Function

