; An installer that installs nothing: a page with a folder, one with a licence and a check box, one with a dropdown.
Unicode true
Target amd64-unicode
Name "Practice setup"
OutFile "${OUT}"
InstallDir "$TEMP\practice setup"
RequestExecutionLevel user
LicenseData "practice_licence.txt"
LicenseForceSelection checkbox
InstType "Full"
InstType "Small"
Page directory
Page license
Page components
Page instfiles
Section "Program"
  SectionIn 1 2
SectionEnd
Section "Extras"
  SectionIn 1
SectionEnd
