; The installer: for everyone with an administrator's rights, for one user without them; silent with /S; /D=FOLDER comes
; last. /AllUsers and /CurrentUser say which of the two is meant.
;
; Expects VERSION, PROGRAM (the file to write), REMOVAL (the program that removes) and FILES, a generated text that has for
; each file of the package "!insertmacro EachFile FOLDER NAME SOURCE", and for each folder, the innermost first,
; "!insertmacro EachFolder FOLDER".
!include packaging/common.nsh
VIAddVersionKey /LANG=0 FileDescription "${PRODUCT} setup"

!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro Languages

LangString NotRegistered ${LANG_ENGLISH} "The component could not be registered."
LangString NotRegistered ${LANG_SIMPCHINESE} "组件注册失败。"
LangString WhoseQuestion ${LANG_ENGLISH} "Install for all users of this computer? That needs an administrator's rights.$\n$\nYes: for all users. No: for you alone."
LangString WhoseQuestion ${LANG_SIMPCHINESE} "是否为这台计算机的所有用户安装？这需要管理员权限。$\n$\n是：为所有用户安装。否：只为您自己安装。"
LangString TooManyRights ${LANG_ENGLISH} "An administrator installs for all users. To install for one user, run this as that user, not as administrator."
LangString TooManyRights ${LANG_SIMPCHINESE} "以管理员身份运行时只能为所有用户安装。要只为一个用户安装，请以该用户身份运行，不要以管理员身份运行。"
LangString UnsafeFolder ${LANG_ENGLISH} "All users load the component, so none of them may replace it. Choose a new folder in Program Files or right below the root of a fixed drive that keeps rights."
LangString UnsafeFolder ${LANG_SIMPCHINESE} "组件由所有用户加载，因此不能让用户替换它。请选择 Program Files 中的新文件夹，或者直接位于固定驱动器根目录下的新文件夹（该驱动器须支持权限设置）。"

Function .onInit
  StrCpy $R0 $INSTDIR  ; from /D=
  Call FindRights
  ${GetParameters} $R1
  ClearErrors
  ${GetOptions} $R1 /AllUsers $R2
  ${IfNot} ${Errors}
  ${AndIf} $Everyone == 0
    !insertmacro Elevate "$R1 /D=$R0"
  ${EndIf}
  ClearErrors
  ${GetOptions} $R1 /CurrentUser $R2
  ${If} ${Errors}
    ${If} $Everyone == 0
      MessageBox MB_YESNO|MB_ICONQUESTION $(WhoseQuestion) /SD IDNO IDNO for_the_user
      !insertmacro Elevate "/AllUsers /D=$R0"
      for_the_user:
    ${EndIf}
  ${ElseIf} $Everyone == 1
    !insertmacro Refuse $(TooManyRights)
  ${EndIf}
  ; An installation over an earlier one goes where that is.
  ${If} $Everyone == 0
    ReadRegStr $Installed HKCU "${UNINSTALL_KEY}" InstallLocation
  ${EndIf}
  StrCpy $INSTDIR "$Programs\${PRODUCT}"
  ${If} $Installed != ""
    StrCpy $INSTDIR $Installed
  ${EndIf}
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
FunctionEnd

; Makes everyone's folder where it is not one that only administrators can have made. Its rights are there from its
; first moment: administrators and the system may do all, users read and run. It has to be new, since what users put into
; a folder before is theirs, and right below a folder that users cannot rename.
!macro MakeEveryonesFolder
  ${If} $INSTDIR != $Installed
  ${AndIf} $INSTDIR != "$Programs\${PRODUCT}"
    ${GetParent} $INSTDIR $R0
    StrCpy $R1 $INSTDIR 2  ; its drive
    StrCpy $R2 0
    !insertmacro Call 'kernel32::GetDriveTypeW(w"$R1\")i.R3'
    !insertmacro Call 'kernel32::GetVolumeInformationW(w"$R1\", p0, i0, p0, p0, *i.R2, p0, i0)'
    IntOp $R2 $R2 & 8  ; FILE_PERSISTENT_ACLS
    ${If} $R3 == 3     ; DRIVE_FIXED
    ${AndIf} $R2 != 0
      ${If} $R0 == $R1
      ${OrIf} $R0 == $PROGRAMFILES64
      ${OrIf} $R0 == $PROGRAMFILES32
        RMDir "$INSTDIR"
        !insertmacro Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w"O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)", i1, *p.R4, p0)'
        !insertmacro Call '*(i12, pR4, i0)p.R5'  ; SECURITY_ATTRIBUTES
        !insertmacro Call 'kernel32::CreateDirectoryW(w"$INSTDIR", pR5)i.R6'
      ${EndIf}
    ${EndIf}
    ${If} $R6 != 1
      !insertmacro GiveUp $(UnsafeFolder)
    ${EndIf}
  ${EndIf}
!macroend

!macro EachFolder folder
!macroend
!macro EachFile folder name source
  SetOutPath "$INSTDIR\${folder}"
  File "/oname=${name}" "${source}"
!macroend

Section
  ${If} $Everyone == 1
    !insertmacro MakeEveryonesFolder
  ${EndIf}
  !insertmacro MakeRoom
  !include "${FILES}"
  !insertmacro EachFile "" uninstall.exe "${REMOVAL}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "$(^Name)"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion ${VERSION}
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher ${PRODUCT}
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
  !insertmacro RegisterAs register $(NotRegistered)
SectionEnd

Function .onInstSuccess
  !insertmacro RemoveAfterwards "" ""
FunctionEnd
