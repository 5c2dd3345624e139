#include "CrashNames.h"

std::string MemoryFaultName()
{
    return "access violation";
}

std::string StackOverflowName()
{
    return "stack overflow";
}
