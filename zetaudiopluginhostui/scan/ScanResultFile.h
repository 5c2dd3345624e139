#pragma once

#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// The file in which the scanner hands over what it has found, beside the plug-in settings. It may go at any
/// moment: another host with the same preferences deletes it, too.
class ScanResultFile
{
  public:
    ScanResultFile() = default;
    explicit ScanResultFile(const std::wstring& pluginSettingsPath);

    const std::wstring& Path() const noexcept { return file.FullPath(); }
    /// Throws `file_exception` when it is there and cannot be deleted.
    void DeleteIfThere() const;
    /// Its bytes. Empty when it is not there, and (traced) when it cannot be read: that is no plug-in's
    /// fault.
    std::string Read() const;

  private:
    zetcore::filesupport::File file;
};

} // namespace zetaudiopluginhostui
