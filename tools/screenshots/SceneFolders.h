#pragma once

#include <filesystem>

namespace screenshots {

/// The folders with which pictures are taken, inside a temporary one: `Plug-Ins` (good and bad samples),
/// `Old Plug-Ins` (one that never returns), `empty` and `filled` (preferences before and after a real scan),
/// and `New Plug-Ins` (those that are added later).
class SceneFolders
{
  public:
    explicit SceneFolders(std::filesystem::path root);

    /// Copies the samples and sets the preferences up; with `scanned` it scans this machine's plug-ins and
    /// the samples in the scanner process. Throws `std::runtime_error`, also when a sample is missing.
    void Build(bool scanned) const;
    /// Copies preferences for a scene to change, and returns the copy. Throws
    /// `std::filesystem::filesystem_error`.
    std::filesystem::path CopyOfPreferences(bool filled) const;
    /// A preferences folder that nobody can write: a file is in its way.
    std::filesystem::path UnusablePreferences() const;
    /// Writes into the preferences what a host leaves there when it crashes while it loads a plug-in.
    void LeaveMarkerOfCrash(const std::filesystem::path& preferences) const;
    /// Adds a folder with two new plug-ins, of which one crashes.
    void AddNewPlugins(const std::filesystem::path& preferences) const;
    /// Adds many new plug-ins with long names and long reasons, and folders that may not be read; some
    /// scanned plug-ins are gone. The unreadable folders are such for this process only.
    void AddManyChanges(const std::filesystem::path& preferences) const;
    /// Adds a folder on a drive that is away.
    void AddOfflineFolder(const std::filesystem::path& preferences) const;
    /// Leaves one folder, with three new plug-ins. The one with this name never returns.
    void AddHang(const std::filesystem::path& preferences) const;
    static constexpr char nameOfHang[] = "Endless Echo";
    /// From now on the host finds no scanner program.
    void TakeScannerAway() const;
    /// A folder that is in no list.
    std::filesystem::path MoreFolder() const;

  private:
    std::filesystem::path root;
};

} // namespace screenshots
