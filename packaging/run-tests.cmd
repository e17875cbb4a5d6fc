@echo off
rem Runs every test of this folder and leaves a report on the desktop. It asks nothing.
setlocal
if not exist "%~dp0programs\bundle_runner.exe" (
    echo Please extract the whole zip file first, then start run-tests.cmd in the folder.
    exit /b 2
)
echo The tests open and close windows and move the mouse pointer for about half an hour.
echo Please do not touch mouse and keyboard until the last line names the report.
echo.
"%~dp0programs\bundle_runner.exe" %*
