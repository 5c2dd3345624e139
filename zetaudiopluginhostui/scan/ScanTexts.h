#pragma once

#include <chrono>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>

/// The progress dialog of a scan shows these texts (UTF-8, localised). Main thread.
namespace zetaudiopluginhostui {

/// The plug-in's name as the registry shows it, and right behind it which part of it is scanned.
std::string ScannedPluginText(const zetaudiofilterhost::PluginLocator& plugin, const std::string& statusText);

/// A plug-in has been scanned for so long already, and is ended when the limit has passed. The scanner may
/// try it again after that; then the limit has nothing more to say.
std::string StillScanningText(std::chrono::seconds passed, std::chrono::milliseconds limit);

/// The scanner process has ended and could not be started again: only the user can close the dialog.
std::string ScannerIsGoneText();

} // namespace zetaudiopluginhostui
