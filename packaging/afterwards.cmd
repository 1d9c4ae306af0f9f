@echo off
rem Waits until a program has ended, and takes away what it could not delete before: the file %left% and its folder
rem %folder%, if named, and its plug-in in the folder %tools%. Ten minutes at most; ping is how it waits.
set tries=0
:again
set /a tries+=1
"%system%\ping.exe" -n 2 127.0.0.1 >nul
if defined left del "%left%"
del "%tools%\System.dll"
if %tries% geq 600 goto end
if defined left if exist "%left%" goto again
if exist "%tools%\System.dll" goto again
:end
if defined folder rmdir "%folder%"
