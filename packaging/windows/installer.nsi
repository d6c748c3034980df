; The installer: for the user who runs it, without an administrator. make_installer compiles it.
;     pelmora-VERSION-setup.exe /S    asks and shows nothing
; Ends with status 3 when Pelmora is running and nobody answers.
;
; Defined outside: VERSION; FOLDER, what is installed; REMOVALS, the script that removes that; ICON;
; OUT, the installer.

Unicode true
; As the program, so it runs wherever the program does.
Target amd64-unicode
SetCompressor /SOLID lzma

!include LogicLib.nsh
!include MUI2.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Pelmora"
!define MENU "$SMPROGRAMS\Pelmora"
; The program logs into the folder in which it is started, and its file dialogs begin there. So that
; is a folder where users look for their files, and it has nothing else in it.
!define START_FOLDER "$DOCUMENTS\Pelmora"
!define STATUS_RUNNING 3

Name "Pelmora"
OutFile "${OUT}"
RequestExecutionLevel user
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Pelmora"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Pelmora ${VERSION}"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "Pelmora"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Pelmora"
VIAddVersionKey "CompanyName" "The Pelmora developers"
VIAddVersionKey "LegalCopyright" "MIT licence"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}/Contrib/Graphics/Wizard/nsis3-metro.bmp"
!define MUI_WELCOMEPAGE_TITLE "Pelmora ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "Pelmora breeds drawings.$\r$\n$\r$\nIt will be installed for you alone, in$\r$\n$INSTDIR.$\r$\n$\r$\nYour drawings will be in$\r$\n${START_FOLDER},$\r$\nwhere you can keep them when you remove Pelmora.$\r$\n$\r$\n$_CLICK"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartFromMenu
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; Ends here when the program in folder $0 is running and the user does not close it. Windows lets
; nobody write a program that runs.
!macro END_IF_RUNNING
    ${Do}
        ${IfNot} ${FileExists} "$0\pelmora.exe"
            ${ExitDo}
        ${EndIf}
        ClearErrors
        FileOpen $1 "$0\pelmora.exe" a
        ${IfNot} ${Errors}
            FileClose $1
            ${ExitDo}
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Pelmora is running. Save what you want to keep, close Pelmora, then choose Retry." /SD IDCANCEL IDCANCEL`
            SetErrorLevel ${STATUS_RUNNING}
            Abort "Pelmora is running. Nothing was changed."
        ${EndIf}
    ${Loop}
!macroend

; An older version takes what it installed with it, as this one may have other files.
Function RemoveOlderVersion
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == ""
        Return
    ${EndIf}
    !insertmacro END_IF_RUNNING
    ${IfNot} ${FileExists} "$0\uninstall.exe"
        Return
    ${EndIf}
    DetailPrint "Removing the older version"
    ; Run in place, so that it can be waited for; it cannot remove itself then.
    ExecWait '"$0\uninstall.exe" /S _?=$0' $1
    ${If} $1 != 0
        Abort "The older version could not be removed (status $1)."
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
FunctionEnd

Section "Pelmora" SECTION_PELMORA
    StrCpy $0 $INSTDIR
    !insertmacro END_IF_RUNNING
    Call RemoveOlderVersion

    ClearErrors
    SetOutPath "$INSTDIR"
    File /r "${FOLDER}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"

    ; A shortcut starts its program in the folder that is the current one now.
    SetOutPath "${START_FOLDER}"
    CreateDirectory "${MENU}"
    CreateShortcut "${MENU}\Pelmora.lnk" "$INSTDIR\pelmora.exe" "" "" "" "" "" "Breeds drawings"
    SetOutPath "$INSTDIR"
    CreateShortcut "${MENU}\Manual and Examples.lnk" "$INSTDIR"

    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Pelmora"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\pelmora.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Pelmora developers"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "URLInfoAbout" "https://pelmora.example"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    SectionGetSize ${SECTION_PELMORA} $0
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
    ${If} ${Errors}
        Abort "Something could not be written. Pelmora may not start from the Start menu."
    ${EndIf}
SectionEnd

Function StartFromMenu
    ExecShell "" "${MENU}\Pelmora.lnk"
FunctionEnd

; The user's files stay. A folder with nothing but logs has none of them.
Function un.RemoveStartFolder
    FindFirst $0 $1 "${START_FOLDER}\*"
    ${While} $1 != ""
        ${If} $1 != "."
        ${AndIf} $1 != ".."
        ${AndIf} $1 != "stdout.txt"
        ${AndIf} $1 != "stderr.txt"
            FindClose $0
            Return
        ${EndIf}
        FindNext $0 $1
    ${EndWhile}
    FindClose $0
    Delete "${START_FOLDER}\stdout.txt"
    Delete "${START_FOLDER}\stderr.txt"
    RMDir "${START_FOLDER}"
FunctionEnd

Section "Uninstall"
    StrCpy $0 $INSTDIR
    !insertmacro END_IF_RUNNING

    ; A current folder cannot be removed.
    SetOutPath "$TEMP"
    !include "${REMOVALS}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    ; Windows makes it for the first program that is installed like this one.
    RMDir "$LOCALAPPDATA\Programs"
    Delete "${MENU}\Pelmora.lnk"
    Delete "${MENU}\Manual and Examples.lnk"
    RMDir "${MENU}"
    Call un.RemoveStartFolder
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
