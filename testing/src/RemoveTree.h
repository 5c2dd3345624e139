#pragma once

#include <filesystem>

namespace zettesting {

/// Removes the folder with all that is in it and can be removed, however long its paths are.
void RemoveTree(const std::filesystem::path& folder);

} // namespace zettesting
