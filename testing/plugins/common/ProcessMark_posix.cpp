#include "ProcessMark.h"

#include <cstdlib>
#include <string>

#include <unistd.h>

namespace zettestplugin {

namespace {

constexpr const char* variable = "ZET_TEST_PLUGIN_MARK";

} // namespace

void MarkProcess()
{
    ::setenv(variable, std::to_string(::getpid()).c_str(), 1);
}

bool ProcessIsMarked()
{
    const char* mark = std::getenv(variable);
    return mark && mark == std::to_string(::getpid());
}

} // namespace zettestplugin
