' A host: creates both classes by name and asks what they are. Exit code 42 says that all went well.
Set validate = CreateObject("Corvelle.ClsValidate")
Set application = CreateObject("Corvelle.ClsVexApp")
' Windows says the class's name, Wine the interface's.
names = Replace(TypeName(validate) & " " & TypeName(application), "_", "")
If names = "ClsValidate ClsVexApp" Then WScript.Quit 42
WScript.Quit 1
