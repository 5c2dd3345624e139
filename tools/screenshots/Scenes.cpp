#include "screenshots/Scenes.h"

#include <algorithm>
#include <stdexcept>

namespace screenshots {

namespace {

// At 200 % the offscreen platform's screen is smaller than the default size.
constexpr QSize least(1, 1), large(1600, 1000), v7Default(968, 474), classicDefault(925, 470);

} // namespace

const std::vector<Scene>& AllScenes()
{
    static const std::vector<Scene> scenes = {
        {.name = "manager-v7"},
        {.name = "manager-v7-dark", .dark = true},
        {.name = "manager-classic", .skin = "classic"},
        {.name = "manager-classic-dark", .skin = "classic", .dark = true},
        {.name = "manager-v7-least", .size = least},
        {.name = "manager-classic-least", .skin = "classic", .size = least},
        {.name = "manager-v7-large", .size = large},
        {.name = "manager-classic-large", .skin = "classic", .size = large},
        {.name = "manager-v7-200", .size = v7Default, .scale = "2"},
        {.name = "manager-classic-200", .skin = "classic", .size = classicDefault, .scale = "2"},
        {.name = "manager-v7-empty", .content = Content::Empty},
        {.name = "manager-classic-empty", .skin = "classic", .content = Content::Empty},
        {.name = "scanning", .action = Action::ScanAndCancel},
        {.name = "scanning-dark", .dark = true, .action = Action::ScanAndCancel},
        {.name = "default-folders", .action = Action::AskForDefaultFolders},
        {.name = "preferences-caution", .action = Action::StartWithoutPreferences},
        {.name = "recovery-caution", .action = Action::StartAfterCrash},
        {.name = "manager-german", .language = "de"},
        {.name = "manager-german-least", .size = least, .language = "de"},
        {.name = "manager-japanese", .language = "ja"},
    };
    return scenes;
}

const Scene& FindScene(const std::string& name)
{
    static const Scene drive{.name = "drive", .content = Content::Empty, .action = Action::Drive};
    if (name == drive.name)
        return drive;
    const auto found = std::find_if(AllScenes().begin(), AllScenes().end(),
                                    [&name](const Scene& scene) { return scene.name == name; });
    if (found == AllScenes().end())
        throw std::runtime_error("there is no picture named " + name);
    return *found;
}

} // namespace screenshots
