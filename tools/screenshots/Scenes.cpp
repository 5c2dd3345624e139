#include "screenshots/Scenes.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include <zetui/skins/Skins.h>

namespace screenshots {

namespace {

constexpr QSize least(1, 1), small(800, 600), narrow(600, 600), large(1600, 1000), smallScreen(1024, 768);

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
        {.name = manager + "-150", .skin = skin, .action = Action::MoveToCell, .scale = "1.5"},
        {.name = manager + "-200", .skin = skin, .action = Action::MoveToCell, .scale = "2"},
        {.name = manager + "-banned-row", .skin = skin, .action = Action::SelectBanned},
        {.name = manager + "-banned-row-dark", .skin = skin, .dark = true, .action = Action::SelectBanned},
        {.name = manager + "-800x600-filter", .skin = skin, .action = Action::FindSome, .size = small},
        {.name = manager + "-narrow-filter", .skin = skin, .action = Action::FindSome, .size = narrow},
        {.name = manager + "-folder-added", .skin = skin, .action = Action::AddFolder},
        {.name = manager + "-folder-offline", .skin = skin, .action = Action::OfflineFolder},
        {.name = manager + "-folder-offline-german",
         .skin = skin,
         .action = Action::OfflineFolder,
         .language = "de"},
        {.name = manager + "-folder-added-dark", .skin = skin, .dark = true, .action = Action::AddFolder},
        {.name = manager + "-800x600-filter-german",
         .skin = skin,
         .action = Action::FindSome,
         .size = small,
         .language = "de"},
        {.name = "scanning-hang" + suffix,
         .skin = skin,
         .content = Content::Empty,
         .action = Action::ScanWithHang},
        {.name = manager + "-empty-dark", .skin = skin, .dark = true, .content = Content::Empty},
        {.name = manager + "-empty", .skin = skin, .content = Content::Empty},
        {.name = "default-folders" + suffix, .skin = skin, .action = Action::AskForDefaultFolders},
    };
    for (const bool dark : {false, true}) {
        const std::string look = skin + (dark ? "-dark" : "");
        for (const auto& [name, action] : {std::pair{"nothing-found-", Action::FindNothing},
                                           {"cell-", Action::MoveToCell},
                                           {"button-", Action::PickButton},
                                           {"title-", Action::MoveToTitle},
                                           {"menu-", Action::OpenMenu},
                                           {"log-", Action::ShowLog},
                                           {"letters-", Action::ShowLetters},
                                           {"note-large-", Action::NoteOfOne}})
            scenes.push_back({.name = name + look, .skin = skin, .dark = dark, .action = action});
    }
    for (const auto& [name, control] : {std::pair{"focus-folders-", "DirectoryList"},
                                        {"focus-button-", "UpdateButton"},
                                        {"focus-box-", "RescanExisting"},
                                        {"focus-icon-", "AddDirectoryButton"},
                                        {"focus-details-", "Details"}})
        scenes.push_back(
            {.name = name + skin, .skin = skin, .action = Action::MoveFocus, .control = control});
    for (const auto& [name, action] : {std::pair{"note-one", Action::NoteOfOne},
                                       {"note-many", Action::NoteOfMany},
                                       {"note-no-scanner", Action::NoteWithoutScanner}})
        for (const std::string language : {"en", "de"})
            scenes.push_back({.name = name + suffix + (language == "en" ? "" : "-german"),
                              .skin = skin,
                              .action = action,
                              .language = language,
                              .screen = smallScreen});
    for (const Language& language : languages) {
        scenes.push_back({.name = std::string("manager-") + language.name + suffix,
                          .skin = skin,
                          .language = language.tag});
        scenes.push_back({.name = std::string("letters-") + language.name + suffix,
                          .skin = skin,
                          .action = Action::ShowLetters,
                          .language = language.tag});
        scenes.push_back({.name = std::string("menu-") + language.name + suffix,
                          .skin = skin,
                          .action = Action::OpenMenu,
                          .language = language.tag});
    }
    return scenes;
}

std::vector<Scene> MakeScenes()
{
    std::vector<Scene> scenes = {
        {.name = "scanning", .action = Action::ScanAndCancel},
        {.name = "scanning-dark", .dark = true, .action = Action::ScanAndCancel},
        {.name = "scanning-classic", .skin = "classic", .action = Action::ScanAndCancel},
        {.name = "scanning-classic-dark", .skin = "classic", .dark = true, .action = Action::ScanAndCancel},
        {.name = "preferences-caution-classic", .skin = "classic", .action = Action::StartWithoutPreferences},
        {.name = "preferences-caution-dark", .dark = true, .action = Action::StartWithoutPreferences},
        {.name = "recovery-classic-dark", .skin = "classic", .dark = true, .action = Action::StartAfterCrash},
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
    std::set<std::string> names;
    for (const Scene& scene : scenes)
        if (!names.insert(scene.name).second)
            throw std::logic_error("two pictures are named " + scene.name);
    return scenes;
}

} // namespace

const std::vector<Scene>& AllScenes()
{
    static const std::vector<Scene> scenes = MakeScenes();
    return scenes;
}

Scene FindScene(const std::string& name)
{
    if (const std::size_t at = name.find('@'); at != std::string::npos) {
        Scene scaled = FindScene(name.substr(0, at));
        scaled.name = name;
        scaled.scale = name.substr(at + 1);
        return scaled;
    }
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
