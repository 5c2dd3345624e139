#include "screenshots/Scenes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace screenshots {

namespace {

constexpr QSize least(1, 1), large(1600, 1000), smallScreen(1024, 768);

struct Language
{
    const char *name, *tag;
};
constexpr Language languages[] = {
    {"german", "de"}, {"french", "fr"}, {"spanish", "es"}, {"japanese", "ja"}, {"chinese", "zh-Hans"}};

std::vector<Scene> MakeScenes()
{
    std::vector<Scene> scenes = {
        {.name = "manager-v7"},
        {.name = "manager-v7-dark", .dark = true},
        {.name = "manager-classic", .skin = "classic"},
        {.name = "manager-classic-dark", .skin = "classic", .dark = true},
        {.name = "manager-v7-least", .size = least},
        {.name = "manager-classic-least", .skin = "classic", .size = least},
        {.name = "manager-v7-large", .size = large},
        {.name = "manager-classic-large", .skin = "classic", .size = large},
        {.name = "manager-v7-200", .action = Action::MoveToCell, .scale = "2"},
        {.name = "manager-classic-200", .skin = "classic", .action = Action::MoveToCell, .scale = "2"},
        {.name = "manager-v7-empty", .content = Content::Empty},
        {.name = "manager-classic-empty", .skin = "classic", .content = Content::Empty},
        {.name = "scanning", .action = Action::ScanAndCancel},
        {.name = "scanning-dark", .dark = true, .action = Action::ScanAndCancel},
        {.name = "default-folders", .action = Action::AskForDefaultFolders},
        {.name = "default-folders-classic", .skin = "classic", .action = Action::AskForDefaultFolders},
        {.name = "preferences-caution", .action = Action::StartWithoutPreferences},
        {.name = "recovery-caution", .action = Action::StartAfterCrash},
        {.name = "manager-german-least", .size = least, .language = "de"},
    };
    for (const bool dark : {false, true}) {
        for (const std::string skin : {"v7", "classic"}) {
            const std::string look = skin + (dark ? "-dark" : "");
            for (const auto& [name, action] : {std::pair{"nothing-found-", Action::FindNothing},
                                               {"cell-", Action::MoveToCell},
                                               {"button-", Action::PickButton}})
                scenes.push_back({.name = name + look, .skin = skin, .dark = dark, .action = action});
        }
    }
    for (const auto& [name, action] : {std::pair{"note-one", Action::NoteOfOne},
                                       {"note-many", Action::NoteOfMany},
                                       {"note-no-scanner", Action::NoteWithoutScanner}})
        for (const std::string skin : {"v7", "classic"})
            for (const std::string language : {"en", "de"})
                scenes.push_back({.name = std::string(name) + (skin == "v7" ? "" : "-classic") +
                                          (language == "en" ? "" : "-german"),
                                  .skin = skin,
                                  .action = action,
                                  .language = language,
                                  .screen = smallScreen});
    for (const Language& language : languages) {
        for (const std::string skin : {"v7", "classic"})
            scenes.push_back(
                {.name = std::string("manager-") + language.name + (skin == "v7" ? "" : "-classic"),
                 .skin = skin,
                 .language = language.tag});
        scenes.push_back({.name = std::string("recovery-") + language.name,
                          .action = Action::StartAfterCrash,
                          .language = language.tag});
    }
    return scenes;
}

} // namespace

const std::vector<Scene>& AllScenes()
{
    static const std::vector<Scene> scenes = MakeScenes();
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
