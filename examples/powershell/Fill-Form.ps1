# Starts the practice target, fills in its form, and shows why a line fails.
# Not run here: the project's machine has no PowerShell.
param([string] $Folder = '.')

Import-Module (Join-Path $PSScriptRoot '..\..\bindings\powershell\Dialwright\Dialwright.psd1')
$folderPath = (Resolve-Path $Folder).ProviderPath
$env:DIALWRIGHT_LIBRARY = Join-Path $folderPath 'Dialwright.dll'
$tool = Join-Path $folderPath 'dialwright.exe'
$dialog = '#32770'
$title = ConvertTo-DialwrightPattern 'Form (PowerShell)'

$target = '"{0}"' -f (Join-Path $folderPath 'practice_target.exe')
$id = Start-DialwrightProgram $target '--title "Form (PowerShell)"'
"practice target: process $id"

# Within this process.
New-DialwrightCommand Window.SetText $dialog $title 12, 'Ada Lovelace' -TimeoutMs 5000 | Invoke-Dialwright
New-DialwrightCommand Window.SetCheckbox $dialog $title 31, $true -TimeoutMs 5000 | Invoke-Dialwright

# By dialwright.exe: it keeps secrets, and says why a line failed.
$form = @(
    New-DialwrightCommand Window.SetText $dialog $title 14, (New-DialwrightSecret -FromEnvironment FORM_PASSWORD)
    New-DialwrightCommand Window.ClickButton $dialog $title 4711 -TimeoutMs 1000
)
try {
    $form | Invoke-Dialwright -Tool $tool -Variables @{ FORM_PASSWORD = 'correct horse' }
} catch {
    $_.Exception.Message
    $_.TargetObject.suggestion
}
New-DialwrightCommand Window.Close $dialog $title | Invoke-Dialwright
