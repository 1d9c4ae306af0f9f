// text_files.h - text files of this machine, line by line.
#pragma once

#include <string>
#include <vector>

using Lines = std::vector<std::wstring>;

// The lines of a file in the machine's ANSI code page, without empty ones at the end. Throws CallFailed.
Lines ansi_lines(const std::wstring& path);

// The lines of a file of Unicode text with its mark, and the other way round, as script hosts write it.
Lines unicode_lines(const std::wstring& path);
void write_unicode(const std::wstring& path, const Lines& lines);
