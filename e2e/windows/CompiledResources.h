#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// One resource of a `.res` file. Names and types that are numbers are written as "#24".
struct CompiledResource
{
    std::string type;
    std::string name;
    std::string bytes;
};

/// Reads a `.res` file, which the compiler's resource tool makes from a library. Throws `std::runtime_error`
/// when it is no such file.
std::vector<CompiledResource> ReadCompiledResources(const std::filesystem::path& file);
