#pragma once

#include <filesystem>

/// The folder of the running program. All of our libraries and programs are in it.
std::filesystem::path ProgramFolder();
