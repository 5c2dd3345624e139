#pragma once

#include <string>

/// The system's name for the crash of a plug-in.
std::string MemoryFaultName();
std::string StackOverflowName();
