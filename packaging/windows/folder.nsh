; The folder that the program is installed in: one of its own, so that nothing of anybody else's is
; replaced or deleted.

!insertmacro Text SUBFOLDER \
  "文件夹 $INSTDIR 里已经有别的东西，所以安装到它里面的新文件夹 Tarnwerk。" \
  "The folder $INSTDIR is not empty. Tarnwerk is installed in a new folder Tarnwerk inside it."
!insertmacro Text OCCUPIED \
  "文件夹 $INSTDIR 里已经有别的东西，请另选一个。" \
  "The folder $INSTDIR is not empty. Please choose another one."

; The folder that "/D=" named, or empty.
Var namedFolder

; NSIS takes "/D=" as the last word, without quotation marks, and silently drops it otherwise. Shells
; and scripts put quotation marks around the folder, or around the whole word, if it contains blanks.
Function TakeNamedFolder
  StrCpy $namedFolder $INSTDIR
  System::Call 'kernel32::GetCommandLineW() w .r0'
  StrCpy $1 0
  ${Do}
    StrCpy $2 $0 4 $1
    IntOp $1 $1 + 1
    ${If} $2 S== '/D="'
    ${OrIf} $2 S== '"/D='
      IntOp $1 $1 + 3
      StrCpy $0 $0 "" $1
      ${WordFind} $0 '"' "+1" $namedFolder
      Return
    ${EndIf}
  ${LoopUntil} $2 == ""
FunctionEnd

; MultiUser sets the folder whenever the mode changes.
Function UseNamedFolder
  ${If} $namedFolder != ""
    StrCpy $INSTDIR $namedFolder
  ${EndIf}
FunctionEnd

; The uninstaller removes the installation that it is in, even if another one is registered.
Function un.UseNamedFolder
  StrCpy $INSTDIR $namedFolder
FunctionEnd

; Sets $1 to 1 if the folder $0 has an installation, else to 0. A portable program is none.
Function AskWhetherInstalled
  StrCpy $1 0
  ${If} ${FileExists} "$0\Tarnwerk.exe"
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    StrCpy $1 1
  ${EndIf}
FunctionEnd

; Sets $1 to 1 if the folder $0 is missing, empty or an installation, else to 0.
Function AskWhetherFit
  Call AskWhetherInstalled
  ${If} $1 = 1
    Return
  ${EndIf}
  StrCpy $1 1
  FindFirst $2 $3 "$0\*"
  ${DoWhile} $3 != ""
    ${If} $3 != "."
    ${AndIf} $3 != ".."
      StrCpy $1 0
    ${EndIf}
    FindNext $2 $3
  ${Loop}
  FindClose $2
FunctionEnd

; Chooses a folder inside the one that the user named, if need be.
Function ChooseFolder
  StrCpy $0 $INSTDIR
  Call AskWhetherFit
  ${If} $1 = 1
    Return
  ${EndIf}
  StrCpy $0 "$INSTDIR\Tarnwerk"
  Call AskWhetherFit
  ${If} $1 = 1
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "$(SUBFOLDER)" /SD IDOK IDOK inside
    Abort
  ${EndIf}
  MessageBox MB_OK|MB_ICONEXCLAMATION "$(OCCUPIED)" /SD IDOK
  Abort
inside:
  StrCpy $INSTDIR $0
FunctionEnd

; Removes the installation in the folder $0, if there is one. Its own uninstaller knows its files,
; which may not be those of this version. It cannot delete itself, since it does not continue as a copy.
Function RemoveOlder
  Call AskWhetherInstalled
  ${If} $1 = 0
    Return
  ${EndIf}
  ExecWait '"$0\uninstall.exe" /S /$MultiUser.InstallMode /FilesOnly _?=$0'
  Delete "$0\uninstall.exe"
  RMDir "$0"
FunctionEnd
