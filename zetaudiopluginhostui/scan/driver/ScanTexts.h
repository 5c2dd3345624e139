#pragma once

#include <chrono>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>

/// The progress dialog of a scan shows these texts (UTF-8, localised). Main thread.
namespace zetaudiopluginhostui {

/// Returns the plug-in's name as the registry shows it, followed by the part of it that is being scanned.
std::string ScannedPluginText(const zetaudiofilterhost::PluginLocator& plugin, const std::string& statusText);

/// Says for how long a plug-in has been scanned already, and that it is ended when the limit has passed.
/// After the limit the scanner may try the plug-in again. Then only the time is said.
std::string StillScanningText(std::chrono::seconds passed, std::chrono::milliseconds limit);

/// Says that the scanner process could not be started again, so that only the user can close the dialog.
std::string ScannerIsGoneText();

} // namespace zetaudiopluginhostui
