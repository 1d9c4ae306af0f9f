@echo off
rem What continuous integration runs on Windows, 64-bit, as an administrator: registers an unpacked package, has it examined
rem by the console tool and checked in the script host, each of both bitnesses, and removes the registration.
rem
rem   .ci\windows.cmd FOLDER
cd /d "%~1"
set failed=0
for %%w in (win32 win64) do call :check %%w\corvelle.exe register
for %%w in (win32 win64) do call :check %%w\corvelle.exe doctor --full --language en
for %%s in (SysWOW64 System32) do call :check %SystemRoot%\%%s\cscript.exe //nologo samples\selfcheck.vbs %%s.txt
for %%w in (win32 win64) do call :check %%w\corvelle.exe unregister
exit /b %failed%

:check
echo ^> %*
%*
if not errorlevel 1 exit /b 0
echo FAILED: %*
set failed=1
exit /b 1
