; What the installer and the program that removes have in common: which rights they have, and what they may rely on.
;
; Whoever starts these programs as administrator may have code of the same user running beside them without those rights,
; which owns HKEY_CURRENT_USER, the user's environment and %TEMP%. So with an administrator's rights nothing is read from
; there, and nothing is loaded or started from a folder that users can write to: no plug-in by its usual call, which
; unpacks it into %TEMP%, no solid compression, which unpacks everything there, no WriteUninstaller, whose program runs
; from there. It is for the same reason that there is one kind of installation for each kind of rights.
Unicode true
SetCompressor lzma
RequestExecutionLevel user
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define PRODUCT Corvelle
!define UNINSTALL_KEYS "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define UNINSTALL_KEY "${UNINSTALL_KEYS}\${PRODUCT}"
Name "${PRODUCT} ${VERSION}"
OutFile "${PROGRAM}"
AllowSkipFiles off
ShowInstDetails show
VIProductVersion ${VERSION}
VIAddVersionKey /LANG=0 ProductName ${PRODUCT}
VIAddVersionKey /LANG=0 ProductVersion ${VERSION}
VIAddVersionKey /LANG=0 FileVersion ${VERSION}
VIAddVersionKey /LANG=0 LegalCopyright ""

Var Everyone   ; 1 with an administrator's rights, 0 without
Var Programs   ; the folder of programs, everyone's or the user's
Var Tools      ; where the plug-ins are
Var Installed  ; where everyone's installation is, if there is one

; Ends a run that has not begun, a silent one too, with exit code 2.
!macro Refuse text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  Call RemoveTools
  SetErrorLevel 2
  Quit
!macroend

; Likewise, from a section.
!macro GiveUp text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  Abort "${text}"
!macroend

; Calls a function of the system, as the system plug-in writes it.
!macro Call what
  Push `${what}`
  CallInstDLL "$Tools\System.dll" Call
!macroend

; Starts a program without a window. Its handles go when this program ends.
!macro Start command
  StrCpy $1 `${command}`
  !insertmacro Call "*(i 68, &v64)p.r2"  ; STARTUPINFOW
  !insertmacro Call "*(&v16)p.r3"        ; PROCESS_INFORMATION
  !insertmacro Call "kernel32::CreateProcessW(p0, wr1, p0, p0, i0, i0x08000000, p0, p0, pr2, pr3)"
!macroend

; Runs a program without a window. $0 is its exit code, or what it was before where the program cannot be started.
!macro Run command
  StrCpy $0 -1
  !insertmacro Start `${command}`
  !insertmacro Call "*$3(p.r4)"
  !insertmacro Call "kernel32::WaitForSingleObject(pr4, i-1)"
  !insertmacro Call "kernel32::GetExitCodeProcess(pr4, *ir0r0)"
!macroend

; Registers or unregisters the DLLs of the bitnesses that this Windows runs, by the tool of each, for everyone or for the
; user alone.
!macro RegisterAs command text
  !insertmacro RegisterBitness 32 ${command} `${text}`
  ${If} $PROGRAMFILES64 != $PROGRAMFILES32
    !insertmacro RegisterBitness 64 ${command} `${text}`
  ${EndIf}
!macroend
!macro RegisterBitness bits command text
  StrCpy $5 `"$INSTDIR\win${bits}\corvelle.exe" ${command}`
  ${If} $Everyone == 0
    StrCpy $5 "$5 --user"
  ${EndIf}
  !insertmacro Run $5
  ${If} $0 != 0
    !insertmacro GiveUp `${text}`
  ${EndIf}
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

; Puts the plug-ins into a new folder of $Programs; an error where that is not allowed.
!macro UnpackTools
  CreateDirectory $Programs
  ClearErrors
  GetTempFileName $Tools $Programs
  ${If} ${Errors}
    SetErrors
  ${Else}
    Delete $Tools
    CreateDirectory $Tools
    SetOverwrite try
    File "/oname=$Tools\System.dll" "${NSISDIR}\Plugins\x86-unicode\System.dll"
    File "/oname=$Tools\UserInfo.dll" "${NSISDIR}\Plugins\x86-unicode\UserInfo.dll"
    File "/oname=$Tools\afterwards.cmd" packaging/afterwards.cmd
    SetOverwrite on
  ${EndIf}
!macroend

; Sets a variable of this program's environment, which those that it starts take over.
!macro SetVariable name value
  StrCpy $1 `${value}`
  !insertmacro Call 'kernel32::SetEnvironmentVariableW(w"${name}", wr1)'
!macroend

; Takes the plug-ins away, and a file with its folder, if named, once this program has ended: up to then it cannot delete
; itself, and the system plug-in stays loaded from its first call on. The system's shell does it, without what the user has
; it run first or set otherwise (/d /e /v). Names are handed over in variables, which are not read as commands.
!macro RemoveAfterwards file folder
  !insertmacro SetVariable left `${file}`
  !insertmacro SetVariable folder `${folder}`
  !insertmacro SetVariable tools $Tools
  !insertmacro SetVariable system $SYSDIR
  SetOutPath $SYSDIR  ; no folder that goes
  !insertmacro Start '"$SYSDIR\cmd.exe" /d /e:on /v:off /s /c ""$Tools\afterwards.cmd" & rmdir /s /q "%tools%""'
!macroend

; The system plug-in has not been called yet.
Function RemoveTools
  Delete "$Tools\UserInfo.dll"
  Delete "$Tools\System.dll"
  Delete "$Tools\afterwards.cmd"
  RMDir $Tools
FunctionEnd

; Finds the rights out: an administrator is who may write to Program Files and is one by the token, too. The token is
; looked at by a plug-in, which only an administrator can have put there. Who can fill the disk can keep even an
; administrator from writing files, who must not be taken for another user then; hence the look at the registry.
Function FindRights
  SetShellVarContext all
  StrCpy $Everyone 1
  StrCpy $Programs $PROGRAMFILES64
  ReadRegStr $Installed HKLM "${UNINSTALL_KEY}" InstallLocation
  !insertmacro UnpackTools
  ${If} ${Errors}
    WriteRegStr HKLM "${UNINSTALL_KEYS}" "${PRODUCT} setup" ""
    ${IfNot} ${Errors}
      DeleteRegValue HKLM "${UNINSTALL_KEYS}" "${PRODUCT} setup"
      !insertmacro Refuse $(NoFolder)
    ${EndIf}
  ${Else}
    CallInstDLL "$Tools\UserInfo.dll" GetAccountType
    Pop $0
    ${If} $0 == Admin
      Return
    ${EndIf}
    Call RemoveTools
  ${EndIf}
  SetShellVarContext current
  StrCpy $Everyone 0
  StrCpy $Programs "$LOCALAPPDATA\Programs"
  !insertmacro UnpackTools
  ${If} ${Errors}
    !insertmacro Refuse $(NoFolder)
  ${EndIf}
FunctionEnd

; Starts this program once more, as administrator. A silent run asks nobody.
!macro Elevate options
  ${If} ${Silent}
    !insertmacro Refuse $(NeedsRights)
  ${EndIf}
  Call RemoveTools
  ExecShell runas "$EXEPATH" `${options}`
  Quit
!macroend

Function .onInstFailed
  !insertmacro RemoveAfterwards "" ""
FunctionEnd
!define MUI_CUSTOMFUNCTION_ABORT RemoveTools

; The texts, behind the pages that a program has.
!macro Languages
  !insertmacro MUI_LANGUAGE English
  !insertmacro MUI_LANGUAGE SimpChinese
  LangString NeedsRights ${LANG_ENGLISH} "This needs an administrator's rights. Run it as administrator."
  LangString NeedsRights ${LANG_SIMPCHINESE} "此操作需要管理员权限。请以管理员身份运行。"
  LangString NoFolder ${LANG_ENGLISH} "There is a folder that cannot be written to: $Tools"
  LangString NoFolder ${LANG_SIMPCHINESE} "无法写入文件夹：$Tools"
!macroend
