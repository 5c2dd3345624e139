#pragma once

#include <filesystem>

/// The folder of the running program, which all of our libraries and programs are in.
std::filesystem::path ProgramFolder();
