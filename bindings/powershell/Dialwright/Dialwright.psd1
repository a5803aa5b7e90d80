# Not run, see Dialwright.psm1.
@{
    RootModule = 'Dialwright.psm1'
    ModuleVersion = '0.1.0'
    GUID = '5b0f3f0e-6c5d-4d8a-9a64-0d6c1c1f7a52'
    Author = 'Dialwright'
    Description = 'Drives the windows of other programs by Dialwright.dll or dialwright.exe'
    PowerShellVersion = '5.1'
    CompatiblePSEditions = @('Desktop', 'Core')
    FunctionsToExport = @(
        'New-DialwrightCommand'
        'ConvertTo-DialwrightPattern'
        'New-DialwrightSecret'
        'Test-DialwrightScript'
        'Invoke-Dialwright'
        'Start-DialwrightProgram'
    )
    CmdletsToExport = @()
    VariablesToExport = @()
    AliasesToExport = @()
}
