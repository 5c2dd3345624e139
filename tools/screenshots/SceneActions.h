#pragma once

#include "screenshots/SceneFolders.h"
#include "screenshots/Scenes.h"
#include "screenshots/StepRunner.h"

namespace screenshots {

/// Adds what is done in the manager's window before the picture is taken. The scene and the folders must
/// outlive the steps.
void AddAction(StepRunner& runner, const Scene& scene, const SceneFolders& folders);

} // namespace screenshots
