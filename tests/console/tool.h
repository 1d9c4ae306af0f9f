// tests/console/tool.h - corvelle.exe as a person or a script runs it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace corvelle::testing {

// What a run of the tool came to; both streams went to files and are UTF-8 with \n as line ends.
struct ToolRun {
  DWORD status = 99;
  std::string out;
  std::string error;
};

// The built tool of this test's bitness.
std::wstring built_tool();

// Runs the tool with these arguments.
ToolRun run_tool(const std::vector<std::wstring>& arguments, const std::wstring& tool = built_tool());

}  // namespace corvelle::testing
