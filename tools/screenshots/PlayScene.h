#pragma once

#include <filesystem>

#include "screenshots/SceneFolders.h"
#include "screenshots/Scenes.h"

namespace screenshots {

/// Runs the host's `manage` command with the steps of this scene, and writes the pictures into the folder. It
/// may be called once in a process, on the main thread. Throws `std::runtime_error` when a step fails.
void PlayScene(const Scene& scene, const SceneFolders& folders, const std::filesystem::path& pictures);

} // namespace screenshots
