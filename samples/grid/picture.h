// picture.h - what a window shows, as a file.
#pragma once

#include <windows.h>

#include <string>

// Writes the whole window, with its frame, as it is on the screen, to a PNG file.
void save_picture(HWND window, const std::wstring& path);
