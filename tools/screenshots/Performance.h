#pragma once

#include <filesystem>

#include "screenshots/Scenes.h"
#include "screenshots/Stage.h"

namespace screenshots {

/// Runs the host's `manage` command as this scene wants it, and writes the pictures into the folder. Once a
/// process, on the main thread. Throws `std::runtime_error` when something did not go as it should.
void Play(const Scene& scene, const Stage& stage, const std::filesystem::path& pictures);

} // namespace screenshots
