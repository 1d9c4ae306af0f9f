; The installer: for everyone or for one user, with /AllUsers or /CurrentUser; silent with /S; /D=FOLDER comes last.
;
; Expects VERSION, PROGRAM (the file to write) and FILES, a generated text that has for each file of the package
; "!insertmacro EachFile FOLDER NAME SOURCE", and for each folder, the innermost first, "!insertmacro EachFolder FOLDER".
Unicode true
!define PRODUCT Corvelle
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"

!define MULTIUSER_MUI
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MINWIN 0x501
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "${PRODUCT}"
; An installation over an earlier one goes where that is.
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME InstallLocation
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME InstallLocation
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include x64.nsh

Name "${PRODUCT} ${VERSION}"
OutFile "${PROGRAM}"
SetCompressor /SOLID lzma
AllowSkipFiles off
ShowInstDetails show
VIProductVersion ${VERSION}
VIAddVersionKey /LANG=0 ProductName ${PRODUCT}
VIAddVersionKey /LANG=0 ProductVersion ${VERSION}
VIAddVersionKey /LANG=0 FileVersion ${VERSION}
VIAddVersionKey /LANG=0 FileDescription "${PRODUCT} setup"
VIAddVersionKey /LANG=0 LegalCopyright ""

!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English
!insertmacro MUI_LANGUAGE SimpChinese

LangString NotRegistered ${LANG_ENGLISH} "The component could not be registered."
LangString NotRegistered ${LANG_SIMPCHINESE} "组件注册失败。"
LangString NotUnregistered ${LANG_ENGLISH} "The component's registration could not be removed."
LangString NotUnregistered ${LANG_SIMPCHINESE} "组件的注册未能取消。"

; Ends a silent run, too, with exit code 2.
!macro GiveUp text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  Abort "${text}"
!macroend

; Takes `file` away. A running host that holds it keeps it under another name, which the next restart removes: its own
; name is free at once, and what is installed there later is safe from that restart.
!macro MakeRoomFor file
  Delete "${file}.*.old"  ; those of earlier times that nobody holds any more
  Delete "${file}"
  ${If} ${FileExists} "${file}"
    StrCpy $0 1
    ${DoWhile} ${FileExists} "${file}.$0.old"
      IntOp $0 $0 + 1
    ${Loop}
    Rename "${file}" "${file}.$0.old"
    Delete /REBOOTOK "${file}.$0.old"
  ${EndIf}
!macroend
!macro MakeRoom
  !insertmacro MakeRoomFor "$INSTDIR\win32\Corvelle.dll"
  !insertmacro MakeRoomFor "$INSTDIR\win32\corvelle.exe"
  !insertmacro MakeRoomFor "$INSTDIR\win64\Corvelle.dll"
  !insertmacro MakeRoomFor "$INSTDIR\win64\corvelle.exe"
!macroend

; Has the system register or unregister a DLL, by the regsvr32 or the tool of its bitness; $0 is 0 where it did.
!macro RunFor bits command
  !if ${bits} == 64
    ${DisableX64FSRedirection}
  !endif
  nsExec::Exec '${command}'
  Pop $0
  !if ${bits} == 64
    ${EnableX64FSRedirection}
  !endif
!macroend

!macro Register bits
  ${If} $MultiUser.InstallMode == AllUsers
    !insertmacro RunFor ${bits} '"$SYSDIR\regsvr32.exe" /s "$INSTDIR\win${bits}\Corvelle.dll"'
  ${Else}
    !insertmacro RunFor ${bits} '"$INSTDIR\win${bits}\corvelle.exe" register --user'
  ${EndIf}
  ${If} $0 != 0
    !insertmacro GiveUp $(NotRegistered)
  ${EndIf}
!macroend

!macro Unregister bits
  ${If} $MultiUser.InstallMode == AllUsers
    !insertmacro RunFor ${bits} '"$SYSDIR\regsvr32.exe" /u /s "$INSTDIR\win${bits}\Corvelle.dll"'
  ${Else}
    !insertmacro RunFor ${bits} '"$INSTDIR\win${bits}\corvelle.exe" unregister --user'
  ${EndIf}
  ${If} $0 != 0
    !insertmacro GiveUp $(NotUnregistered)
  ${EndIf}
!macroend

Function .onInit
  StrCpy $R0 $INSTDIR  ; from /D=
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

!macro EachFolder folder
!macroend
!macro EachFile folder name source
  SetOutPath "$INSTDIR\${folder}"
  File "/oname=${name}" "${source}"
!macroend

Section
  !insertmacro MakeRoom
  !include "${FILES}"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "$(^Name)"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion ${VERSION}
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher ${PRODUCT}
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
  !insertmacro Register 32
  ${If} ${RunningX64}
    !insertmacro Register 64
  ${EndIf}
SectionEnd

!macroundef EachFolder
!macro EachFolder folder
  RMDir /REBOOTOK "$INSTDIR\${folder}"
!macroend
!macroundef EachFile
!macro EachFile folder name source
  Delete "$INSTDIR\${folder}${name}"
!macroend

; Takes away what the installer put there, and nothing else.
Section Uninstall
  ${If} ${RunningX64}
    !insertmacro Unregister 64
  ${EndIf}
  !insertmacro Unregister 32
  !insertmacro MakeRoom
  !include "${FILES}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"
  RMDir /REBOOTOK "$INSTDIR"
SectionEnd
