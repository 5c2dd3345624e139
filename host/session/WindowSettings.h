#pragma once

#include <string>

#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/filesupport/paths/File.h>

/// The settings that the manager dialog remembers between two runs of the program; docs/files.md describes
/// the file.
namespace zetaudiopluginmanager {

std::string WindowSettingsToText(const zetaudiopluginhostui::AudioPluginManagerSettings& settings);
/// Settings that the text does not mention get their defaults. Throws `std::runtime_error`, which names line,
/// element and attribute, for a text that cannot be read. Any thread.
zetaudiopluginhostui::AudioPluginManagerSettings WindowSettingsFromText(const std::string& text);

/// In the preferences folder.
zetcore::filesupport::File WindowSettingsFile();
/// Gives the defaults when there is no file. A file that cannot be read is named on standard error and kept
/// aside, and gives the defaults, too.
zetaudiopluginhostui::AudioPluginManagerSettings LoadWindowSettings();
/// Replaces the file when its settings are different. Throws `file_exception`.
void SaveWindowSettings(const zetaudiopluginhostui::AudioPluginManagerSettings& settings);

} // namespace zetaudiopluginmanager
