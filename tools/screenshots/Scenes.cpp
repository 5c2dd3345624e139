#include "screenshots/Scenes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <zetui/skins/Skins.h>

namespace screenshots {

namespace {

constexpr QSize least(1, 1), large(1600, 1000), smallScreen(1024, 768);

struct Language
{
    const char *name, *tag;
};
constexpr Language languages[] = {
    {"german", "de"}, {"french", "fr"}, {"spanish", "es"}, {"japanese", "ja"}, {"chinese", "zh-Hans"}};

std::vector<Scene> ScenesOf(const std::string& skin)
{
    const std::string manager = "manager-" + skin;
    // Pictures of the usual skin do not name it.
    const std::string suffix = skin == Scene{}.skin ? "" : "-" + skin;
    std::vector<Scene> scenes = {
        {.name = manager, .skin = skin},
        {.name = manager + "-dark", .skin = skin, .dark = true},
        {.name = manager + "-least", .skin = skin, .size = least},
        {.name = manager + "-large", .skin = skin, .size = large},
        {.name = manager + "-200", .skin = skin, .action = Action::MoveToCell, .scale = "2"},
        {.name = manager + "-empty", .skin = skin, .content = Content::Empty},
        {.name = "default-folders" + suffix, .skin = skin, .action = Action::AskForDefaultFolders},
    };
    for (const bool dark : {false, true}) {
        const std::string look = skin + (dark ? "-dark" : "");
        for (const auto& [name, action] : {std::pair{"nothing-found-", Action::FindNothing},
                                           {"cell-", Action::MoveToCell},
                                           {"button-", Action::PickButton}})
            scenes.push_back({.name = name + look, .skin = skin, .dark = dark, .action = action});
    }
    for (const auto& [name, action] : {std::pair{"note-one", Action::NoteOfOne},
                                       {"note-many", Action::NoteOfMany},
                                       {"note-no-scanner", Action::NoteWithoutScanner}})
        for (const std::string language : {"en", "de"})
            scenes.push_back({.name = name + suffix + (language == "en" ? "" : "-german"),
                              .skin = skin,
                              .action = action,
                              .language = language,
                              .screen = smallScreen});
    for (const Language& language : languages)
        scenes.push_back({.name = std::string("manager-") + language.name + suffix,
                          .skin = skin,
                          .language = language.tag});
    return scenes;
}

std::vector<Scene> MakeScenes()
{
    std::vector<Scene> scenes = {
        {.name = "scanning", .action = Action::ScanAndCancel},
        {.name = "scanning-dark", .dark = true, .action = Action::ScanAndCancel},
        {.name = "preferences-caution", .action = Action::StartWithoutPreferences},
        {.name = "recovery-caution", .action = Action::StartAfterCrash},
        {.name = "manager-german-least", .size = least, .language = "de"},
    };
    for (const Language& language : languages)
        scenes.push_back({.name = std::string("recovery-") + language.name,
                          .action = Action::StartAfterCrash,
                          .language = language.tag});
    for (const zetui::skins::Skin each : zetui::skins::AllSkins()) {
        const std::vector<Scene> ofSkin = ScenesOf(NameOf(each));
        scenes.insert(scenes.end(), ofSkin.begin(), ofSkin.end());
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
