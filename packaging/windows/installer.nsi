; The installer: makensis -DVERSION=1.2.2 -DSOURCE=FOLDER -DOUTPUT=FILE.exe installer.nsi
; Installs for one user or for all (/CurrentUser, /AllUsers); silent with /S. A newer version goes over an older one.
Unicode true
Target amd64-unicode
Name "Tidewell"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
AllowSkipFiles off
BrandingText "Tidewell ${VERSION}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "Tidewell"
; Not "Tidewell-...": those are the settings of channels.
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "Software\Quayside\Setup"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "Folder"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "Software\Quayside\Setup"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "Folder"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh

!define MUI_ICON "${SOURCE}\..\icon.ico"
!define MUI_UNICON "${SOURCE}\..\icon.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\tidewell.exe"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Spanish"

LangString Running ${LANG_ENGLISH} "Tidewell is running. Exit it first, then press Retry."
LangString Running ${LANG_SPANISH} "Tidewell está en marcha. Ciérrelo primero y pulse Reintentar."
LangString AskSettings ${LANG_ENGLISH} "Remove the settings of Tidewell as well? Your recordings are kept in any case."
LangString AskSettings ${LANG_SPANISH} "¿Eliminar también los ajustes de Tidewell? Las grabaciones se conservan siempre."
LangString SecondChannel ${LANG_ENGLISH} "Tidewell (second channel)"
LangString SecondChannel ${LANG_SPANISH} "Tidewell (segundo canal)"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tidewell"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tidewell"
VIAddVersionKey "CompanyName" "Quayside"
VIAddVersionKey "FileDescription" "Tidewell Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "MIT license"

; Sets $R1 to "yes" when this file of the program cannot be replaced.
!macro LookWhetherRunning FILE
  ${If} ${FileExists} "$INSTDIR\${FILE}"
    ClearErrors
    Rename "$INSTDIR\${FILE}" "$INSTDIR\${FILE}.old"
    ${IfNot} ${Errors}
      Rename "$INSTDIR\${FILE}.old" "$INSTDIR\${FILE}"
      FileOpen $0 "$INSTDIR\${FILE}" a
    ${EndIf}
    ${If} ${Errors}
      StrCpy $R1 yes
    ${Else}
      FileClose $0
    ${EndIf}
  ${EndIf}
!macroend

; A running program cannot be replaced or removed, and it is not ours to end: it may be recording. Silent: gives up with
; the exit code 2.
!macro StopWhileRunning
  ${Do}
    StrCpy $R1 no
    !insertmacro LookWhetherRunning tidewell.exe
    !insertmacro LookWhetherRunning tidewell.com
    ${If} $R1 == no
      ${ExitDo}
    ${EndIf}
    ${If} ${Silent}
      SetErrorLevel 2
      Abort
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" IDRETRY +2
    Abort
  ${Loop}
!macroend

Function .onInit
  StrCpy $R0 $INSTDIR ; from /D=
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
FunctionEnd

; It removes the installation that it lies in, whichever others there are.
Function un.onInit
  StrCpy $R0 $INSTDIR
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $1 HKLM "Software\Quayside\Setup" "Folder"
  ${If} $1 == $R0
    Call un.MultiUser.InstallMode.AllUsers
  ${Else}
    Call un.MultiUser.InstallMode.CurrentUser
  ${EndIf}
  StrCpy $INSTDIR $R0
FunctionEnd

; Removes what an installer has put into the folder, by its own list. What the owner has put there stays.
!macro RemoveProgram
  ${If} ${FileExists} "$INSTDIR\installed-files.txt"
    FileOpen $1 "$INSTDIR\installed-files.txt" r
    ${Do}
      FileRead $1 $2
      ${If} $2 == ""
        ${ExitDo}
      ${EndIf}
      StrCpy $2 $2 -2 ; the end of the line
      ${If} $2 != "installed-files.txt"
        Delete "$INSTDIR\$2"
        RMDir "$INSTDIR\$2" ; the folders come last; one that is not empty stays
      ${EndIf}
    ${Loop}
    FileClose $1
    Delete "$INSTDIR\installed-files.txt"
  ${EndIf}
!macroend

; An installation of the other kind, or in another folder, goes: two of them would be upgraded one at a time.
!macro RemoveOther ROOT
  ReadRegStr $1 ${ROOT} "Software\Quayside\Setup" "Folder"
  ${If} $1 != ""
  ${AndIf} $1 != $INSTDIR
  ${AndIf} ${FileExists} "$1\uninstall.exe"
    ExecWait '"$1\uninstall.exe" /S _?=$1' $0
    ${If} $0 != 0
      DetailPrint "$1"
      SetErrorLevel 2
      Abort
    ${EndIf}
    Delete "$1\uninstall.exe"
    RMDir "$1"
  ${EndIf}
!macroend

Section "Tidewell"
  !insertmacro StopWhileRunning
  !insertmacro RemoveOther HKLM
  !insertmacro RemoveOther HKCU
  !insertmacro RemoveProgram ; the files of an older version that this one no longer has
  SetOutPath "$INSTDIR"
  ClearErrors
  File /r "${SOURCE}\*"
  ${If} ${Errors}
    SetErrorLevel 2
    Abort
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Tidewell.lnk" "$INSTDIR\tidewell.exe"
  CreateShortcut "$SMPROGRAMS\$(SecondChannel).lnk" "$INSTDIR\tidewell.exe" "--profile 2"
  WriteRegStr SHCTX "Software\Quayside\Setup" "Folder" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Tidewell"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tidewell.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Quayside"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; What starts this installation at log-on: an entry for each channel.
!macro RemoveAutostart
  StrCpy $R2 '"$INSTDIR\tidewell.exe"'
  StrLen $R3 $R2
  StrCpy $R4 0
  ${Do}
    ClearErrors
    EnumRegValue $1 HKCU "Software\Microsoft\Windows\CurrentVersion\Run" $R4
    ${If} ${Errors}
      ${ExitDo}
    ${EndIf}
    ReadRegStr $2 HKCU "Software\Microsoft\Windows\CurrentVersion\Run" $1
    StrCpy $2 $2 $R3
    ${If} $2 == $R2
      DeleteRegValue HKCU "Software\Microsoft\Windows\CurrentVersion\Run" $1
    ${Else}
      IntOp $R4 $R4 + 1
    ${EndIf}
  ${Loop}
!macroend

; Of all channels: "Tidewell" and "Tidewell-NAME".
!macro RemoveSettings
  DeleteRegKey HKCU "Software\Quayside\Tidewell"
  StrCpy $R4 0
  ${Do}
    ClearErrors
    EnumRegKey $1 HKCU "Software\Quayside" $R4
    ${If} ${Errors}
    ${OrIf} $1 == ""
      ${ExitDo}
    ${EndIf}
    StrCpy $2 $1 9
    ${If} $2 == "Tidewell-"
      DeleteRegKey HKCU "Software\Quayside\$1"
    ${Else}
      IntOp $R4 $R4 + 1
    ${EndIf}
  ${Loop}
!macroend

Section "Uninstall"
  !insertmacro StopWhileRunning
  !insertmacro RemoveProgram
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR" ; only when nothing of the owner's is left in it
  ReadRegStr $1 SHCTX "Software\Quayside\Setup" "Folder"
  ${If} $1 == $INSTDIR
    Delete "$SMPROGRAMS\Tidewell.lnk"
    Delete "$SMPROGRAMS\Tidewell (second channel).lnk"
    Delete "$SMPROGRAMS\Tidewell (segundo canal).lnk"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    DeleteRegKey SHCTX "Software\Quayside\Setup"
  ${EndIf}
  !insertmacro RemoveAutostart
  ; Silent: the settings stay.
  MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(AskSettings)" /SD IDNO IDNO keep
  !insertmacro RemoveSettings
  DeleteRegKey /ifempty HKCU "Software\Quayside"
keep:
SectionEnd
