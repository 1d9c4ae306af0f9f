' A host that runs on: it creates an object, makes the file STARTED, waits until that is gone, and calls the object.
' Exit code 42 says that all went well.
Set files = CreateObject("Scripting.FileSystemObject")
Set validate = CreateObject("Corvelle.ClsValidate")
files.CreateTextFile(WScript.Arguments(0)).Close
Do While files.FileExists(WScript.Arguments(0))
Loop
If validate.Set_String1("ab", 4) = "ab  " Then WScript.Quit 42
WScript.Quit 1
