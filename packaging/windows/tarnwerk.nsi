; The Windows installer. packaging/windows/make defines VERSION, ICON, SIDE_PICTURE, OUTPUT,
; INSTALL_COMMANDS and REMOVE_COMMANDS (files with a command for each file and folder).
;
; It installs the program for one user or for all users. Pages, files and messages are in each
; user's local application data; the installer does not touch them, and the uninstaller only on
; request. Both delete nothing but what an installer put there.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarnwerk"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "Tarnwerk"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION UseNamedFolder
!define MULTIUSER_INSTALLMODE_UNFUNCTION un.UseNamedFolder
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_MUI
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include WordFunc.nsh

Name "Tarnwerk"
OutFile "${OUTPUT}"
BrandingText "Tarnwerk ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "Tarnwerk"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "Tarnwerk 安装程序"
VIAddVersionKey /LANG=0 "CompanyName" "The Tarnwerk developers"
VIAddVersionKey /LANG=0 "LegalCopyright" "© 2026 The Tarnwerk developers"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE_PICTURE}"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "$(WELCOME)"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAsUser

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE ChooseFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES

; The first is the default for systems in other languages.
!insertmacro MUI_LANGUAGE "SimpChinese"
!insertmacro MUI_LANGUAGE "English"

!macro Text name chinese english
  LangString ${name} ${LANG_SIMPCHINESE} "${chinese}"
  LangString ${name} ${LANG_ENGLISH} "${english}"
!macroend
!insertmacro Text WELCOME \
  "这个程序把 Tarnwerk 安装到您的电脑上，也可以更新已有的 Tarnwerk。$\r$\n$\r$\n更新时，您的网页、文件、邮件和设置都保持不变。$\r$\n$\r$\n$_CLICK" \
  "This program installs Tarnwerk on your computer, or updates it.$\r$\n$\r$\nAn update keeps your pages, files, messages and settings.$\r$\n$\r$\n$_CLICK"
!insertmacro Text PROGRAM "Tarnwerk 程序" "The program"
!insertmacro Text PROGRAM_MORE "程序、说明和示例站点。" "The program, its readme and the sample site."
!insertmacro Text MENU "开始菜单" "Start menu"
!insertmacro Text MENU_MORE "在开始菜单里放入 Tarnwerk。" "An entry for Tarnwerk in the start menu."
!insertmacro Text AUTOSTART "登录时启动" "Start at login"
!insertmacro Text AUTOSTART_MORE "登录时启动全部服务，停在托盘里。" "Starts the services at login and stays in the tray."
!insertmacro Text DATA "删除我的网页、文件和邮件" "Delete my pages, files and messages"
!insertmacro Text DATA_MORE "同时删除数据文件夹和设置。无法恢复！" "Deletes the data folder and the settings too. This cannot be undone!"

!include packaging/windows/running.nsh
!include packaging/windows/folder.nsh

; What the command line asks for, 1 or 0.
Var start
Var filesOnly

; Sets ${variable} to 1 if the word is on the command line, else to 0.
!macro HasWord prefix word variable
  ${${prefix}GetParameters} $R0
  ClearErrors
  ${${prefix}GetOptions} $R0 "${word}" $R1
  StrCpy ${variable} 1
  ${If} ${Errors}
    StrCpy ${variable} 0
  ${EndIf}
  ClearErrors
!macroend

Section "$(PROGRAM)" SectionProgram
  SectionIn RO
  Call ChooseFolder ; without a window nobody has chosen yet
  ReadRegStr $5 SHCTX "${KEY}" "InstallLocation"
  ${If} $5 != ""
  ${AndIf} $5 != $INSTDIR
    StrCpy $0 $5
    Call StopProgram
  ${EndIf}
  StrCpy $0 $INSTDIR
  Call StopProgram
  Call RemoveOlder
  ${If} $5 != ""
    StrCpy $0 $5
    Call RemoveOlder
  ${EndIf}
  SetOutPath "$INSTDIR"
  ; First, so that what was broken off is known as an installation.
  WriteUninstaller "$INSTDIR\uninstall.exe"
  !include "${INSTALL_COMMANDS}"
  SetOutPath "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "DisplayName" "Tarnwerk"
  WriteRegStr SHCTX "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${KEY}" "DisplayIcon" "$INSTDIR\Tarnwerk.exe"
  WriteRegStr SHCTX "${KEY}" "Publisher" "The Tarnwerk developers"
  WriteRegStr SHCTX "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${KEY}" "EstimatedSize" $0
SectionEnd

Section "$(MENU)" SectionMenu
  CreateShortCut "$SMPROGRAMS\Tarnwerk.lnk" "$INSTDIR\Tarnwerk.exe"
SectionEnd

Section /o "$(AUTOSTART)" SectionAutostart
  CreateShortCut "$SMSTARTUP\Tarnwerk.lnk" "$INSTDIR\Tarnwerk.exe" "START SHOW"
SectionEnd

Section "un.$(PROGRAM)" SectionUnProgram
  SectionIn RO
  StrCpy $0 $INSTDIR
  Call un.StopProgram
  ${If} $filesOnly = 0
    Call un.ForgetInstallation
  ${EndIf}
  !include "${REMOVE_COMMANDS}"
  Delete "$INSTDIR\uninstall.exe"
  ; Succeeds only if the folder is empty: other files are kept.
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
SectionEnd

Section /o "un.$(DATA)" SectionUnData
  SetShellVarContext current
  RMDir /r "$LOCALAPPDATA\Tarnwerk"
  RMDir /r "$APPDATA\Tarnwerk"
  DeleteRegKey HKCU "Software\Tarnwerk"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "$(PROGRAM_MORE)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionMenu} "$(MENU_MORE)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionAutostart} "$(AUTOSTART_MORE)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END
!insertmacro MUI_UNFUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionUnProgram} "$(PROGRAM_MORE)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionUnData} "$(DATA_MORE)"
!insertmacro MUI_UNFUNCTION_DESCRIPTION_END

; Another installation may be registered by now.
Function un.ForgetInstallation
  ReadRegStr $0 SHCTX "${KEY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Delete "$SMPROGRAMS\Tarnwerk.lnk"
    Delete "$SMSTARTUP\Tarnwerk.lnk"
    DeleteRegKey SHCTX "${KEY}"
  ${EndIf}
  ; The entry that the program's option to start with Windows creates.
  ReadRegStr $0 HKLM "${RUN}" "Tarnwerk"
  ${If} $0 == "$INSTDIR\Tarnwerk.exe"
    DeleteRegValue HKLM "${RUN}" "Tarnwerk"
  ${EndIf}
FunctionEnd

; The installer may have administrator rights; a server should not. What starts at login, with the
; services, is started in the same way.
Function StartAsUser
  StrCpy $0 "$SMSTARTUP\Tarnwerk.lnk"
  ${IfNot} ${FileExists} $0
    StrCpy $0 "$INSTDIR\Tarnwerk.exe"
  ${EndIf}
  Exec '"$WINDIR\explorer.exe" "$0"'
FunctionEnd

Function .onInit
  Call TakeNamedFolder
  !insertmacro MULTIUSER_INIT
  !insertmacro HasWord "" "/Autostart" $0
  ${If} $0 == 1
    !insertmacro SelectSection ${SectionAutostart}
  ${EndIf}
  !insertmacro HasWord "" "/Start" $start
FunctionEnd

; With a window, the last page asks.
Function .onInstSuccess
  ${If} ${Silent}
  ${AndIf} $start = 1
    Call StartAsUser
  ${EndIf}
FunctionEnd

Function un.onInit
  StrCpy $namedFolder $INSTDIR
  !insertmacro MULTIUSER_UNINIT
  !insertmacro HasWord "un." "/RemoveData" $0
  ${If} $0 == 1
    !insertmacro SelectSection ${SectionUnData}
  ${EndIf}
  !insertmacro HasWord "un." "/FilesOnly" $filesOnly
FunctionEnd
