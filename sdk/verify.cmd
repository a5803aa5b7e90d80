@echo off
rem Tells whether this build of Dialwright works on this machine, and writes it into verify-report.json beside this
rem file, or into the folder for temporary files where that cannot be written. Options are handed on, such as --quick.
setlocal EnableExtensions DisableDelayedExpansion
set "here=%~dp0"
set "machine=%PROCESSOR_ARCHITECTURE%"
if not "%PROCESSOR_ARCHITEW6432%"=="" set "machine=%PROCESSOR_ARCHITEW6432%"
set "native=%here%bin\x64\dialwright-verify.exe"
if /i not "%machine%"=="ARM64" goto one
if not exist "%here%bin\arm64\dialwright-verify.exe" goto one

rem ARM64 runs programs of both kinds, so both are looked at.
"%here%bin\arm64\dialwright-verify.exe" --json "%here%verify-report.json" --json "%TEMP%\verify-report.json" --also "%native%" %*
goto done

:one
if not exist "%native%" goto missing
"%native%" --json "%here%verify-report.json" --json "%TEMP%\verify-report.json" %*

:done
set "code=%ERRORLEVEL%"
goto pause

:missing
echo verify.cmd: bin\x64\dialwright-verify.exe is not beside this file. Please unpack the whole archive first. 1>&2
set "code=3"

:pause
rem Explorer starts a file as: cmd.exe /c ""FILE" ", with a blank before the last quote, and closes the window behind it.
set "tail=%CMDCMDLINE:~-3%"
set "tail=%tail:"=?%"
if "%tail%"=="? ?" pause
exit /b %code%
