#pragma once

#include <filesystem>

namespace screenshots {

/// The folders that the pictures are taken on, below a throw-away one:
/// `samples` (plug-ins, good and bad), `empty` and `filled` (preferences before and after a real scan), and
/// `news` (plug-ins that come later).
class Stage
{
  public:
    explicit Stage(std::filesystem::path root);

    /// Copies the samples and sets the preferences up; with `scanned` it scans this machine's plug-ins and
    /// the samples in the scanner process. Throws `std::runtime_error`.
    void Build(bool scanned) const;
    /// Preferences that a scene may change, where it may. Throws `std::filesystem::filesystem_error`.
    std::filesystem::path CopyOfPreferences(bool filled) const;
    /// A preferences folder that nobody can write: a file is in its way.
    std::filesystem::path UnusablePreferences() const;
    /// Leaves in the preferences what a host leaves that goes down while it loads a plug-in.
    void LeaveMarkerOfCrash(const std::filesystem::path& preferences) const;
    /// Adds a folder with two new plug-ins, of which one crashes.
    void AddNews(const std::filesystem::path& preferences) const;
    /// More of them, with long names and long reasons, and a folder that may not be read; some that were
    /// scanned are gone. This process only.
    void AddMuchNews(const std::filesystem::path& preferences) const;
    /// From now on the host finds no scanner program.
    void TakeScannerAway() const;

  private:
    std::filesystem::path root;
};

} // namespace screenshots
