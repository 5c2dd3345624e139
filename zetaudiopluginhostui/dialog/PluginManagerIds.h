#pragma once

/// The controls of the manager dialog, as its layout archives name them.
namespace zetaudiopluginhostui::ids {

inline constexpr char kPluginTreeSection[] = "PluginTreeSection";
inline constexpr char kPluginList[] = "PluginList";
inline constexpr char kDirectoryList[] = "DirectoryList";
inline constexpr char kUpdateButton[] = "UpdateButton";
inline constexpr char kEnableAllButton[] = "EnableAllButton";
inline constexpr char kDisableAllButton[] = "DisableAllButton";
inline constexpr char kAddDirectoryButton[] = "AddDirectoryButton";
inline constexpr char kRemoveDirectoryButton[] = "RemoveDirectoryButton";
inline constexpr char kRescanExisting[] = "RescanExisting";
/// Our archives have no such control. A host's own archive may have one.
inline constexpr char kEnableVST2Shell[] = "EnableVST2Shell";
inline constexpr char kSeparateProcess[] = "SeparateProcess";
inline constexpr char kDefaultDirectoriesButton[] = "DefaultDirectoriesButton";
inline constexpr char kOKButton[] = "OKButton";
inline constexpr char kCancelButton[] = "CancelButton";
inline constexpr char kFindTextEdit[] = "FindTextEdit";
inline constexpr char kFindStaticText[] = "FindStaticText";

inline constexpr char kArchiveName[] = "AudioPluginManager";

} // namespace zetaudiopluginhostui::ids
