@echo off
rem KivSystem looks for its settings and modules in the current folder, and starts with this command line only.
pushd "%~dp0"
start "" "%~dp0KivSystem.exe" CALLEDBY=KIV,FUNCTION=MAIN
