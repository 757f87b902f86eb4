; Ends a running program before its file is replaced or deleted, which Windows refuses. The user is
; told first, the program ends by itself, and is never killed: while it runs, nothing is changed, and
; the exit code is 3.

!insertmacro Text RUNNING \
  "Tarnwerk 正在运行。继续的话，它的服务会先停下来，已连接的客户也会断开。" \
  "Tarnwerk is running. If you continue, its services stop, and connected clients are cut off."
!insertmacro Text STILL_RUNNING \
  "Tarnwerk 还在运行，也许是别的用户启动的。请先退出它，再重试。" \
  "Tarnwerk is still running, perhaps for another user. Close it, then try again."

!macro DefineStopProgram prefix

; Sets $1 to 1 if the program in the folder $0 runs, else to 0: a file that runs cannot be opened for
; writing, as long as somebody else uses it.
Function ${prefix}AskWhetherItRuns
  StrCpy $1 0
  StrCpy $2 "$0\Tarnwerk.exe"
  ; CreateFile(GENERIC_WRITE, every share mode, OPEN_EXISTING)
  System::Call 'kernel32::CreateFileW(w r2, i 0x40000000, i 7, p 0, i 3, i 0, p 0) p .r3 ?e'
  Pop $4
  ${If} $3 P<> -1
    System::Call 'kernel32::CloseHandle(p r3)'
  ${ElseIf} $4 = 32 ; ERROR_SHARING_VIOLATION
    StrCpy $1 1
  ${EndIf}
FunctionEnd

; Ends the program in the folder $0, or everything.
Function ${prefix}StopProgram
  Call ${prefix}AskWhetherItRuns
  ${If} $1 = 0
    Return
  ${EndIf}
  MessageBox MB_OKCANCEL|MB_ICONINFORMATION "$(RUNNING)" /SD IDOK IDOK stop
  Abort
stop:
  ExecWait '"$0\Tarnwerk.exe" STOP'
  Call ${prefix}AskWhetherItRuns
  ${If} $1 = 0
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(STILL_RUNNING)" /SD IDCANCEL IDRETRY stop
  SetErrorLevel 3
  Abort
FunctionEnd

!macroend
!insertmacro DefineStopProgram ""
!insertmacro DefineStopProgram "un."
