#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QSize>

namespace screenshots {

enum class Content
{
    /// The machine's plug-ins and the samples, some of them banned.
    Plugins,
    /// As at the very first start.
    Empty,
};

enum class Action
{
    Look,
    ScanAndCancel,
    /// A scan, up to the note that tells what did not go well: one new plug-in crashes, much happens at once,
    /// or there is no scanner program.
    NoteOfOne,
    NoteOfMany,
    NoteWithoutScanner,
    AskForDefaultFolders,
    /// A find text that no plug-in has.
    FindNothing,
    /// To a cell of the list, and to the button in one: what has the focus is to be seen.
    MoveToCell,
    PickButton,
    StartWithoutPreferences,
    StartAfterCrash,
    /// Scan, find, switch one off, OK.
    Drive,
};

/// One picture (or, when driving, one for each step).
struct Scene
{
    std::string name;
    std::string skin = "v7";
    bool dark = false;
    Content content = Content::Plugins;
    Action action = Action::Look;
    /// The default size without it; less than the least size gives that.
    std::optional<QSize> size = std::nullopt;
    std::string scale = "1";
    std::string language = "en";
    /// Only where there is no display; the offscreen platform's own one is smaller than the manager's window.
    QSize screen = QSize(2560, 1440);
};

const std::vector<Scene>& AllScenes();
/// Throws `std::runtime_error` for a name that no scene has.
const Scene& FindScene(const std::string& name);

} // namespace screenshots
