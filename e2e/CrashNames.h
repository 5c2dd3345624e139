#pragma once

#include <string>

/// How the system calls what plug-ins die of.
std::string MemoryFaultName();
std::string StackOverflowName();
