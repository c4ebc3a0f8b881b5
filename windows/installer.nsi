; The installer for Windows. scripts/package-windows passes VERSION, STAGE (the folder with what is installed), FILES (a script
; with the names in it, for the uninstaller) and OUTPUT. For one user or, as administrator, for all:
;   Veldra-setup.exe [/S] [/CurrentUser | /AllUsers] [/Thumbnails] [/D=FOLDER]
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "Veldra"
!define MULTIUSER_USE_PROGRAMFILES64
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh

Name "Veldra"
OutFile "${OUTPUT}"
BrandingText "Veldra ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Veldra"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Veldra, editor for 3D models: setup"
VIAddVersionKey "LegalCopyright" "the Veldra authors"

!define MUI_ICON "${STAGE}/../veldra.ico"
!define MUI_UNICON "${STAGE}/../veldra.ico"
!define MUI_ABORTWARNING
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Veldra.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Veldra"
!define PROGRAM_KEY "Software\Classes\Applications\Veldra.exe"
!define PATH_KEY "Software\Microsoft\Windows\CurrentVersion\App Paths\Veldra.exe"
!define ASSOCIATIONS_CHANGED 0x08000000

; Veldra among the programs of "Open with", for files that many other programs have, too.
!macro OfferToOpen EXTENSION
  WriteRegStr SHCTX "${PROGRAM_KEY}\SupportedTypes" ".${EXTENSION}" ""
  WriteRegNone SHCTX "Software\Classes\.${EXTENSION}\OpenWithList\Veldra.exe" ""
!macroend
!macro OfferNoMore EXTENSION
  DeleteRegKey SHCTX "Software\Classes\.${EXTENSION}\OpenWithList\Veldra.exe"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.${EXTENSION}\OpenWithList"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.${EXTENSION}"
!macroend

; A type of the game's own: Veldra opens it, unless another program does already.
!macro OpenType EXTENSION TYPE DESCRIPTION
  WriteRegStr SHCTX "Software\Classes\${TYPE}" "" "${DESCRIPTION}"
  WriteRegStr SHCTX "Software\Classes\${TYPE}\DefaultIcon" "" "$INSTDIR\Veldra.exe,0"
  WriteRegStr SHCTX "Software\Classes\${TYPE}\shell\open\command" "" '"$INSTDIR\Veldra.exe" "%1"'
  WriteRegNone SHCTX "Software\Classes\.${EXTENSION}\OpenWithProgids" "${TYPE}"
  ReadRegStr $0 SHCTX "Software\Classes\.${EXTENSION}" ""
  StrCmp $0 "" 0 +2
    WriteRegStr SHCTX "Software\Classes\.${EXTENSION}" "" "${TYPE}"
  !insertmacro OfferToOpen "${EXTENSION}"
!macroend
!macro OpenTypeNoMore EXTENSION TYPE
  DeleteRegKey SHCTX "Software\Classes\${TYPE}"
  DeleteRegValue SHCTX "Software\Classes\.${EXTENSION}\OpenWithProgids" "${TYPE}"
  DeleteRegKey /ifempty SHCTX "Software\Classes\.${EXTENSION}\OpenWithProgids"
  ReadRegStr $0 SHCTX "Software\Classes\.${EXTENSION}" ""
  StrCmp $0 "${TYPE}" 0 +2
    DeleteRegValue SHCTX "Software\Classes\.${EXTENSION}" ""
  !insertmacro OfferNoMore "${EXTENSION}"
!macroend

; The library that draws thumbnails, and the types that the Explorer is to ask it for.
!define THUMBNAILS "{6F0B7E55-9C0E-4B9B-8A1D-2C7D0F6C3E41}"
!define THUMBNAILS_KEY "Software\Classes\CLSID\${THUMBNAILS}"
!define THUMBNAIL_HANDLER "ShellEx\{E357FCCD-A995-4576-B01F-234630154E96}"
!macro DrawThumbnails EXTENSION
  WriteRegStr SHCTX "Software\Classes\.${EXTENSION}\${THUMBNAIL_HANDLER}" "" "${THUMBNAILS}"
!macroend
!macro DrawThumbnailsNoMore EXTENSION
  ReadRegStr $0 SHCTX "Software\Classes\.${EXTENSION}\${THUMBNAIL_HANDLER}" ""
  StrCmp $0 "${THUMBNAILS}" 0 +4
    DeleteRegKey SHCTX "Software\Classes\.${EXTENSION}\${THUMBNAIL_HANDLER}"
    DeleteRegKey /ifempty SHCTX "Software\Classes\.${EXTENSION}\ShellEx"
    DeleteRegKey /ifempty SHCTX "Software\Classes\.${EXTENSION}"
!macroend

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section "Veldra" SectionProgram
  SectionIn RO
  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*.*"
  WriteUninstaller "$INSTDIR\Uninstall.exe"

  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Veldra"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Veldra.exe,0"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "the Veldra authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegStr SHCTX "${PATH_KEY}" "" "$INSTDIR\Veldra.exe"
SectionEnd

Section "Start menu" SectionMenu
  CreateShortcut "$SMPROGRAMS\Veldra.lnk" "$INSTDIR\Veldra.exe"
SectionEnd

Section "File types" SectionTypes
  WriteRegStr SHCTX "${PROGRAM_KEY}" "FriendlyAppName" "Veldra"
  WriteRegStr SHCTX "${PROGRAM_KEY}\shell\open\command" "" '"$INSTDIR\Veldra.exe" "%1"'
  !insertmacro OpenType "pod" "Veldra.Archive" "Game archive"
  !insertmacro OpenType "trk" "Veldra.Truck" "Truck"
  !insertmacro OfferToOpen "bin"
  !insertmacro OfferToOpen "3ds"
  !insertmacro OfferToOpen "obj"
  !insertmacro OfferToOpen "gltf"
  !insertmacro OfferToOpen "glb"
  !insertmacro OfferToOpen "ply"
  !insertmacro OfferToOpen "stl"
  System::Call 'shell32::SHChangeNotify(i ${ASSOCIATIONS_CHANGED}, i 0, p 0, p 0)'
SectionEnd

; Not ticked: whoever wants them asks for them, on the page of the components or with /Thumbnails.
Section /o "Thumbnails in the Explorer" SectionThumbnails
  WriteRegStr SHCTX "${THUMBNAILS_KEY}" "" "Veldra's thumbnails"
  WriteRegStr SHCTX "${THUMBNAILS_KEY}\InprocServer32" "" "$INSTDIR\veldra-thumbnails.dll"
  WriteRegStr SHCTX "${THUMBNAILS_KEY}\InprocServer32" "ThreadingModel" "Apartment"
  !insertmacro DrawThumbnails "bin"
  !insertmacro DrawThumbnails "pod"
  !insertmacro DrawThumbnails "trk"
  !insertmacro DrawThumbnails "raw"
  System::Call 'shell32::SHChangeNotify(i ${ASSOCIATIONS_CHANGED}, i 0, p 0, p 0)'
SectionEnd

; Behind the sections, whose numbers it needs.
Function .onInit
  ; Empty unless /D= says something, and the next line forgets that.
  StrCpy $R0 $INSTDIR
  !insertmacro MULTIUSER_INIT
  StrCmp $R0 "" +2
    StrCpy $INSTDIR $R0
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/Thumbnails" $1
  IfErrors +2
    SectionSetFlags ${SectionThumbnails} 1
FunctionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "The editor and the command line, veldra-cli."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionMenu} "An entry in the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionTypes} "Opens .POD and .TRK files. Models (.BIN) and meshes stay with the programs that they are with; Veldra is among those of $\"Open with$\"."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionThumbnails} "Small pictures of models, trucks, archives and textures in the Explorer. They are drawn by a process of their own."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Takes away what was installed, file by file: what else lies in the folder is the user's, and so are settings and recovery
; copies in the user's own folders.
Section "Uninstall"
  !include "${FILES}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Veldra.lnk"
  !insertmacro OpenTypeNoMore "pod" "Veldra.Archive"
  !insertmacro OpenTypeNoMore "trk" "Veldra.Truck"
  !insertmacro OfferNoMore "bin"
  !insertmacro OfferNoMore "3ds"
  !insertmacro OfferNoMore "obj"
  !insertmacro OfferNoMore "gltf"
  !insertmacro OfferNoMore "glb"
  !insertmacro OfferNoMore "ply"
  !insertmacro OfferNoMore "stl"
  !insertmacro DrawThumbnailsNoMore "bin"
  !insertmacro DrawThumbnailsNoMore "pod"
  !insertmacro DrawThumbnailsNoMore "trk"
  !insertmacro DrawThumbnailsNoMore "raw"
  DeleteRegKey SHCTX "${THUMBNAILS_KEY}"
  DeleteRegKey SHCTX "${PROGRAM_KEY}"
  DeleteRegKey SHCTX "${PATH_KEY}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
  System::Call 'shell32::SHChangeNotify(i ${ASSOCIATIONS_CHANGED}, i 0, p 0, p 0)'
SectionEnd
