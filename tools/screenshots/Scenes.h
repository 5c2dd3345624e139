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
    /// Empty lists, as at the very first start.
    Empty,
};

enum class Action
{
    Look,
    ScanAndCancel,
    /// A scan with one plug-in that never returns.
    ScanWithHang,
    /// A scan, up to the note about what went wrong: one new plug-in crashes, much happens at once, or the
    /// scanner program is missing.
    NoteOfOne,
    NoteOfMany,
    NoteWithoutScanner,
    AskForDefaultFolders,
    /// A find text that no plug-in has.
    FindNothing,
    /// The focus goes to a cell of the list, or to a button in a cell. The picture shows what has the focus.
    MoveToCell,
    PickButton,
    /// The focus goes to the control that the scene names, while a banned plug-in is selected.
    MoveFocus,
    StartWithoutPreferences,
    StartAfterCrash,
    /// A banned plug-in is selected, so that the foot of the list says why.
    SelectBanned,
    /// A find text, also where the box that holds it has no room.
    FindSome,
    /// The menu of a banned plug-in's row is open.
    OpenMenu,
    /// The log of a banned plug-in is open.
    ShowLog,
    /// Alt is held down, which shows each control's letter.
    ShowLetters,
    /// The focus is on a column's title.
    MoveToTitle,
    /// Among the folders is one on a drive that is away.
    OfflineFolder,
    /// One more folder is added to those that are there.
    AddFolder,
    /// Scan, find, switch one off, OK.
    Drive,
};

/// A scene gives one picture; `Drive` gives one for each step.
struct Scene
{
    std::string name;
    std::string skin = "v7";
    bool dark = false;
    Content content = Content::Plugins;
    Action action = Action::Look;
    /// Without a value the window has its default size. Sizes below the least one give the least one.
    std::optional<QSize> size = std::nullopt;
    std::string control = {};
    std::string scale = "1";
    std::string language = "en";
    /// Used where there is no display. The default screen of the offscreen platform is smaller than the
    /// manager's window.
    QSize screen = QSize(2560, 1440);
};

const std::vector<Scene>& AllScenes();
/// The name may end in `@SCALE`, which gives the scene at that scale. Throws `std::runtime_error` for a name
/// that no scene has.
Scene FindScene(const std::string& name);

} // namespace screenshots
