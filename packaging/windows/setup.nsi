; SPDX-License-Identifier: MIT
; The set-up for Windows: for one user, without administrator. VERSION, FOLDER (what is installed) and OUTPUT are given by the
; command line. With /S nothing is asked; /D=folder, as the last argument and without quotes, says where to.
; As the program: 64 bits.
Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define PROJECTS "Orvane.Project"
!define REMOVAL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane"

Name "Orvane"
OutFile "${OUTPUT}"
RequestExecutionLevel user
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Orvane"
InstallDirRegKey HKCU "${REMOVAL}" InstallLocation
SetCompressor /SOLID lzma
BrandingText " "
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey ProductName "Orvane"
VIAddVersionKey FileDescription "Set-up of Orvane"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "The Orvane developers, MIT licence"

!define MUI_ICON "${FOLDER}\pi_data.ico"
!define MUI_UNICON "${FOLDER}\pi_data.ico"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!insertmacro MUI_PAGE_LICENSE "${FOLDER}\LICENCE.txt"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\qmx.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs has its file open, so that it can neither be replaced nor removed.
!macro WAIT_UNTIL_ENDED
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\qmx.exe"
      ${ExitDo}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\qmx.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Orvane is running. End it, then go on." /SD IDCANCEL IDRETRY again
    SetErrorLevel 2
    Quit
    again:
  ${Loop}
!macroend

Section "Orvane" program
  SectionIn RO
  !insertmacro WAIT_UNTIL_ENDED
  SetOutPath "$INSTDIR"
  SetOverwrite on
  File /r "${FOLDER}\*.*"
  WriteUninstaller "$INSTDIR\remove.exe"
  CreateDirectory "$SMPROGRAMS\Orvane"
  ; Where the program starts, and so where it offers to save.
  SetOutPath "$DOCUMENTS"
  CreateShortcut "$SMPROGRAMS\Orvane\Orvane.lnk" "$INSTDIR\qmx.exe"
  CreateShortcut "$SMPROGRAMS\Orvane\Orvane help.lnk" "$INSTDIR\qmx.chm"
  WriteRegStr HKCU "${REMOVAL}" DisplayName "Orvane"
  WriteRegStr HKCU "${REMOVAL}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${REMOVAL}" Publisher "The Orvane developers"
  WriteRegStr HKCU "${REMOVAL}" DisplayIcon "$INSTDIR\pi_data.ico"
  WriteRegStr HKCU "${REMOVAL}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${REMOVAL}" UninstallString '"$INSTDIR\remove.exe"'
  WriteRegStr HKCU "${REMOVAL}" QuietUninstallString '"$INSTDIR\remove.exe" /S'
  WriteRegDWORD HKCU "${REMOVAL}" NoModify 1
  WriteRegDWORD HKCU "${REMOVAL}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD HKCU "${REMOVAL}" EstimatedSize "$0"
SectionEnd

!macro WRITE_CLASS ROOT BELOW
  WriteRegStr ${ROOT} "${BELOW}${PROJECTS}" "" "Orvane project"
  WriteRegStr ${ROOT} "${BELOW}${PROJECTS}\DefaultIcon" "" "$INSTDIR\pi_data.ico"
  WriteRegStr ${ROOT} "${BELOW}${PROJECTS}\shell\open\command" "" '"$INSTDIR\qmx.exe" "%1"'
  WriteRegStr ${ROOT} "${BELOW}.qmx" "" "${PROJECTS}"
!macroend

Section "Open .qmx projects with Orvane" association
  !insertmacro WRITE_CLASS HKCU "Software\Classes\"
  ; Not every system that is like Windows reads the classes of the user.
  ReadRegStr $0 HKCR "${PROJECTS}\shell\open\command" ""
  ${If} $0 == ""
    !insertmacro WRITE_CLASS HKCR ""
  ${EndIf}
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

Section /o "Icon on the desktop" icon
  SetOutPath "$DOCUMENTS"
  CreateShortcut "$DESKTOP\Orvane.lnk" "$INSTDIR\qmx.exe"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${program} "The program, its help and its entries in the start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${association} "A project that is opened in a folder starts Orvane."
  !insertmacro MUI_DESCRIPTION_TEXT ${icon} "A shortcut to the program on the desktop."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; A class goes only where it leads to this program: another one may have been unpacked elsewhere.
!macro FORGET_CLASS ROOT BELOW NAME COMMAND
  ReadRegStr $0 ${ROOT} "${BELOW}${NAME}\shell\open\command" ""
  ${If} $0 == '${COMMAND}'
    DeleteRegKey ${ROOT} "${BELOW}${NAME}"
    ReadRegStr $0 ${ROOT} "${BELOW}.qmx" ""
    ${If} $0 == "${NAME}"
      DeleteRegKey ${ROOT} "${BELOW}.qmx"
    ${EndIf}
  ${EndIf}
!macroend

; Those of the set-up, and what the program's own command for the association writes.
!macro FORGET_CLASSES ROOT BELOW
  !insertmacro FORGET_CLASS ${ROOT} "${BELOW}" "${PROJECTS}" '"$INSTDIR\qmx.exe" "%1"'
  !insertmacro FORGET_CLASS ${ROOT} "${BELOW}" "Orvane" '$INSTDIR\qmx.exe %1'
!macroend

Section Uninstall
  !insertmacro WAIT_UNTIL_ENDED
  ; By their names: what a person has put beside the program stays.
  Delete "$INSTDIR\qmx.exe"
  Delete "$INSTDIR\qmx.chm"
  Delete "$INSTDIR\pi_data.ico"
  Delete "$INSTDIR\LICENCE.txt"
  RMDir /r "$INSTDIR\licences"
  Delete "$INSTDIR\remove.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Orvane\Orvane.lnk"
  Delete "$SMPROGRAMS\Orvane\Orvane help.lnk"
  RMDir "$SMPROGRAMS\Orvane"
  Delete "$DESKTOP\Orvane.lnk"
  !insertmacro FORGET_CLASSES HKCU "Software\Classes\"
  !insertmacro FORGET_CLASSES HKCR ""
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
  DeleteRegKey HKCU "${REMOVAL}"
  Delete "$APPDATA\Orvane\Orvane.ini"
  RMDir "$APPDATA\Orvane"
  ${If} ${FileExists} "$LOCALAPPDATA\Orvane\session-*.qmx"
    MessageBox MB_YESNO|MB_ICONQUESTION "The last session is kept for the next start of Orvane and may hold what was never saved. \
Remove it, too?" /SD IDYES IDNO keep
  ${EndIf}
  Delete "$LOCALAPPDATA\Orvane\session-*.qmx*"
  keep:
  RMDir "$LOCALAPPDATA\Orvane"
SectionEnd
