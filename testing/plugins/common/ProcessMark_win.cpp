#include "ProcessMark.h"

#include <string>

#include <windows.h>

namespace zettestplugin {

namespace {

constexpr const char* variable = "ZET_TEST_PLUGIN_MARK";

} // namespace

void MarkProcess()
{
    ::SetEnvironmentVariableA(variable, std::to_string(::GetCurrentProcessId()).c_str());
}

bool ProcessIsMarked()
{
    char mark[32] = {};
    const DWORD length = ::GetEnvironmentVariableA(variable, mark, sizeof(mark));
    return length > 0 && length < sizeof(mark) && mark == std::to_string(::GetCurrentProcessId());
}

} // namespace zettestplugin
