#pragma once

#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// The scanner hands over what it has found in this file, which lies beside the plug-in settings. The file
/// may vanish at any moment, because another host with the same preferences deletes it too.
class ScanResultFile
{
  public:
    ScanResultFile() = default;
    explicit ScanResultFile(const std::wstring& pluginSettingsPath);

    const std::wstring& Path() const noexcept { return file.FullPath(); }
    /// Throws `file_exception` when the file is there and cannot be deleted.
    void DeleteIfThere() const;
    /// Returns the file's bytes. They are empty when the file is not there, and when it cannot be read. An
    /// unreadable file is traced and no error, because it is no plug-in's fault.
    std::string Read() const;

  private:
    zetcore::filesupport::File file;
};

} // namespace zetaudiopluginhostui
