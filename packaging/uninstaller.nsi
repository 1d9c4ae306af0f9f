; What removes an installation: everyone's with an administrator's rights, the user's without them; silent with /S. It is an
; installer that writes nothing: the generator's own uninstallers copy themselves into %TEMP% and run there.
;
; Expects VERSION, PROGRAM (the file to write) and FILES, as installer.nsi does.
!include packaging/common.nsh
VIAddVersionKey /LANG=0 FileDescription "${PRODUCT} removal"

!insertmacro MUI_PAGE_INSTFILES
!insertmacro Languages

Caption $(Title)
LangString Title ${LANG_ENGLISH} "Remove ${PRODUCT}"
LangString Title ${LANG_SIMPCHINESE} "卸载 ${PRODUCT}"
LangString Question ${LANG_ENGLISH} "Remove ${PRODUCT}?"
LangString Question ${LANG_SIMPCHINESE} "是否卸载 ${PRODUCT}？"
LangString NotUnregistered ${LANG_ENGLISH} "The component's registration could not be removed."
LangString NotUnregistered ${LANG_SIMPCHINESE} "组件的注册未能取消。"
LangString NotEveryones ${LANG_ENGLISH} "This is not what is installed for all users: $INSTDIR"
LangString NotEveryones ${LANG_SIMPCHINESE} "这不是为所有用户安装的组件：$INSTDIR"

Function .onInit
  StrCpy $INSTDIR $EXEDIR
  Call FindRights
  ${If} $Everyone == 1
  ${AndIf} $INSTDIR != $Installed
    !insertmacro Refuse $(NotEveryones)
  ${EndIf}
  ${If} $Everyone == 0
  ${AndIf} $INSTDIR == $Installed
    !insertmacro Elevate ""
  ${EndIf}
  MessageBox MB_YESNO|MB_ICONQUESTION $(Question) /SD IDYES IDYES agreed
  Call RemoveTools
  Abort
  agreed:
FunctionEnd

!macro EachFolder folder
  RMDir /REBOOTOK "$INSTDIR\${folder}"
!macroend
!macro EachFile folder name source
  Delete "$INSTDIR\${folder}${name}"
!macroend

; Takes away what the installer put there, and nothing else.
Section
  !insertmacro RegisterAs unregister $(NotUnregistered)
  !insertmacro MakeRoom
  !include "${FILES}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  ${If} ${RebootFlag}
    RMDir /REBOOTOK "$INSTDIR"  ; held files go at the same restart
  ${EndIf}
SectionEnd

; Comes when the user has closed the window.
Function .onInstSuccess
  !insertmacro RemoveAfterwards $EXEPATH $INSTDIR
FunctionEnd
