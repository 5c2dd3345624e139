#pragma once

#include <filesystem>

namespace zettesting {

/// Removes the folder and everything in it that can be removed, however long the paths are.
void RemoveTree(const std::filesystem::path& folder);

} // namespace zettesting
