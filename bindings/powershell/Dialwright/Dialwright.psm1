# Dialwright for PowerShell 5.1 and 7: New-DialwrightCommand writes a line, Invoke-Dialwright carries it out.
#
# Not run: the project's machine has no PowerShell. This file is parsed there with a grammar of the language, and the
# C# that it compiles is compiled with Mono by the rules of PowerShell 5.1, and tested as far as it runs anywhere.

$sources = 'Command.cs', 'Mask.cs', 'ErrorLog.cs', 'NativeMethods.cs', 'Library.cs', 'ToolProcess.cs'

if (-not ('Dialwright.Command' -as [type])) {
    # In a package the sources lie beside this file, in the repository beside the folder of this binding.
    $folder = Join-Path $PSScriptRoot 'src'
    if (-not (Test-Path $folder)) { $folder = Join-Path $PSScriptRoot '..\..\csharp' }
    Add-Type -Path ($sources | ForEach-Object { Join-Path $folder $_ })
}

function Import-Library {
    $path = $env:DIALWRIGHT_LIBRARY
    if (-not $path) {
        $architecture = if ($env:PROCESSOR_ARCHITECTURE -eq 'ARM64') { 'win-arm64' } else { 'win-x64' }
        $path = Join-Path $PSScriptRoot "native\$architecture\Dialwright.dll"
    }
    [Dialwright.Library]::Load($path)
}

# The error of a call as one that stops the caller; its own exception, not the one that PowerShell wraps around it.
function New-Failure([System.Exception] $Exception, [string] $Id, [object] $Target) {
    $category = [System.Management.Automation.ErrorCategory]::OperationStopped
    New-Object System.Management.Automation.ErrorRecord $Exception, $Id, $category, $Target
}

function Invoke-Tool([string] $Script, [string[]] $Tool, [string[]] $Option, [hashtable] $Variables) {
    $dictionary = New-Object 'System.Collections.Generic.Dictionary[string,string]'
    foreach ($name in $Variables.Keys) { $dictionary[$name] = [string] $Variables[$name] }
    [Dialwright.ToolProcess]::Run($Script, $Tool, $Option, $dictionary)
}

<#
.SYNOPSIS
Writes the line of a command.
.DESCRIPTION
Quotes and escapes what must be, always writes the timeout, and refuses what cannot be written.
.PARAMETER Name
The command's name.
.PARAMETER Class
The window's class: an expression, see ConvertTo-DialwrightPattern.
.PARAMETER Title
The window's title: an expression as well.
.PARAMETER Arguments
Texts, whole numbers, $true or $false for a check box, lists of whole numbers for a rectangle, position or size, or what
New-DialwrightSecret gave, for a text.
.PARAMETER TimeoutMs
Milliseconds; -1 for ever.
.PARAMETER NonRegex
Compares class and title literally.
.EXAMPLE
New-DialwrightCommand Window.SetText '#32770' 'Sign in' 1001, $text -TimeoutMs 5000
.EXAMPLE
New-DialwrightCommand Window.Move '#32770' 'Sign in' (100, 80), (520, 360)
#>
function New-DialwrightCommand {
    [CmdletBinding()]
    [OutputType([string])]
    param(
        [Parameter(Mandatory = $true, Position = 0)] [string] $Name,
        [Parameter(Mandatory = $true, Position = 1)] [string] $Class,
        [Parameter(Mandatory = $true, Position = 2)] [string] $Title,
        [Parameter(Position = 3)] [object[]] $Arguments = @(),
        [int] $TimeoutMs = 10000,
        [switch] $NonRegex
    )
    # What a pipeline gave is wrapped.
    $values = [object[]] @($Arguments | ForEach-Object { , $_.PSObject.BaseObject })
    $command = New-Object Dialwright.Command -ArgumentList $Name, $Class, $Title, $values
    $command.TimeoutMs = $TimeoutMs
    $command.NonRegex = $NonRegex.IsPresent
    $command.ToString()
}

<#
.SYNOPSIS
Gives an expression for class or title that matches this very text, whatever its case.
.PARAMETER Text
The text; for an empty one any text matches.
.EXAMPLE
ConvertTo-DialwrightPattern 'Save As (1)'
#>
function ConvertTo-DialwrightPattern {
    [CmdletBinding()]
    [OutputType([string])]
    param([Parameter(Mandatory = $true, Position = 0, ValueFromPipeline = $true)] [AllowEmptyString()] [string] $Text)
    process { [Dialwright.Command]::Literal($Text) }
}

<#
.SYNOPSIS
Gives a text that dialwright.exe fills in, so that no script holds it.
.PARAMETER FromFile
Its name in the file that Invoke-Dialwright gets as SecretFile.
.PARAMETER FromEnvironment
Its name in the environment of dialwright.exe; Invoke-Dialwright adds Variables to it.
.EXAMPLE
New-DialwrightCommand Window.SetText '#32770' 'Sign in' 1002, (New-DialwrightSecret -FromFile PASSWORD)
#>
function New-DialwrightSecret {
    [CmdletBinding(DefaultParameterSetName = 'File')]
    param(
        [Parameter(Mandatory = $true, ParameterSetName = 'File')] [string] $FromFile,
        [Parameter(Mandatory = $true, ParameterSetName = 'Environment')] [string] $FromEnvironment
    )
    if ($PSCmdlet.ParameterSetName -eq 'File') { return [Dialwright.Secret]::FromFile($FromFile) }
    [Dialwright.Secret]::FromEnvironment($FromEnvironment)
}

<#
.SYNOPSIS
Tells whether the shape of every line is right. Touches no window.
.PARAMETER Script
Lines, or a whole script.
.EXAMPLE
Get-Content sign-in.txt -Encoding UTF8 | Test-DialwrightScript
#>
function Test-DialwrightScript {
    [CmdletBinding()]
    [OutputType([bool])]
    param(
        [Parameter(Mandatory = $true, Position = 0, ValueFromPipeline = $true)] [AllowEmptyString()] [string[]] $Script
    )
    begin { $lines = New-Object 'System.Collections.Generic.List[string]' }
    process { $lines.AddRange($Script) }
    end {
        Import-Library
        [Dialwright.Library]::ValidateScript($lines -join "`n")
    }
}

<#
.SYNOPSIS
Carries out lines, up to the first that fails.
.DESCRIPTION
Without Tool the library does so within this process, and blocks it until it is done. A failure stops the caller; its
exception has the Command, with typed texts hidden, and the Lines of the library's error file.

With Tool dialwright.exe does so, in another process: it tells how each line went, says why one failed, and survives
targets that hang. The failure's ErrorId begins with the code, such as control_not_found.
.PARAMETER Script
Lines, or a whole script.
.PARAMETER Tool
The path of dialwright.exe.
.PARAMETER SecretFile
A file with lines NAME=VALUE, for New-DialwrightSecret -FromFile.
.PARAMETER Variables
Added to the environment of dialwright.exe, for New-DialwrightSecret -FromEnvironment.
.PARAMETER Option
More options of "dialwright run".
.EXAMPLE
New-DialwrightCommand Window.ClickButton '#32770' 'Sign in' 1 | Invoke-Dialwright
.EXAMPLE
Get-Content sign-in.txt -Encoding UTF8 | Invoke-Dialwright -Tool .\dialwright.exe -SecretFile secrets.txt
#>
function Invoke-Dialwright {
    [CmdletBinding(SupportsShouldProcess = $true, DefaultParameterSetName = 'Library')]
    param(
        [Parameter(Mandatory = $true, Position = 0, ValueFromPipeline = $true)] [AllowEmptyString()] [string[]] $Script,
        [Parameter(Mandatory = $true, ParameterSetName = 'Tool')] [string] $Tool,
        [Parameter(ParameterSetName = 'Tool')] [string] $SecretFile,
        [Parameter(ParameterSetName = 'Tool')] [hashtable] $Variables = @{},
        [Parameter(ParameterSetName = 'Tool')] [string[]] $Option = @()
    )
    begin { $lines = New-Object 'System.Collections.Generic.List[string]' }
    process { $lines.AddRange($Script) }
    end {
        $text = $lines -join "`n"
        if (-not $PSCmdlet.ShouldProcess([Dialwright.Mask]::Script($text), 'Carry out')) { return }
        if ($PSCmdlet.ParameterSetName -eq 'Library') {
            Import-Library
            try {
                [Dialwright.Library]::ExecuteScript($text)
            } catch {
                $cause = $_.Exception.GetBaseException()
                $PSCmdlet.ThrowTerminatingError((New-Failure $cause 'DialwrightFailed' $null))
            }
            return
        }
        if ($SecretFile) { $Option = @('--secret-file', $SecretFile) + $Option }
        $ended = Invoke-Tool $text @($Tool) $Option $Variables
        $rows = @()
        if ($ended.Output) { $rows = @(($ended.Output | ConvertFrom-Json).files | ForEach-Object { $_.lines }) }
        $failed = $rows | Where-Object { $_.status -eq 'failed' } | Select-Object -First 1
        if ($failed) {
            $said = '{0}: {1} (line {2}: {3})' -f $failed.code, $failed.reason, $failed.line, $failed.text
            $PSCmdlet.ThrowTerminatingError((New-Failure ([System.Exception] $said) $failed.code $failed))
        }
        if ($ended.ExitCode -ne 0) {
            $said = "dialwright run ended with $($ended.ExitCode): $($ended.Said)"
            $PSCmdlet.ThrowTerminatingError((New-Failure ([System.Exception] $said) 'DialwrightNotRun' $null))
        }
        $rows
    }
}

<#
.SYNOPSIS
Starts a program, without waiting for it, and gives its process ID.
.PARAMETER Program
The program; a path with blanks must be quoted within.
.PARAMETER Arguments
The rest of its command line.
.EXAMPLE
$id = Start-DialwrightProgram notepad.exe notes.txt
#>
function Start-DialwrightProgram {
    [CmdletBinding(SupportsShouldProcess = $true)]
    [OutputType([int])]
    param(
        [Parameter(Mandatory = $true, Position = 0)] [string] $Program,
        [Parameter(Position = 1)] [string] $Arguments = ''
    )
    if (-not $PSCmdlet.ShouldProcess($Program, 'Start')) { return }
    Import-Library
    try {
        [Dialwright.Library]::Launch($Program, $Arguments)
    } catch {
        $PSCmdlet.ThrowTerminatingError((New-Failure $_.Exception.GetBaseException() 'DialwrightFailed' $Program))
    }
}
