#include "CrashNames.h"

std::string MemoryFaultName()
{
    return "segmentation fault";
}

std::string StackOverflowName()
{
    return MemoryFaultName();
}
