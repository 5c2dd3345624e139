#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

/// A quick look into the host's registry for the one thing that the scanner needs of it: which VST3 modules
/// work, so that a shell that is there as VST3 too can be skipped. Loading ten thousand records for that
/// would cost each start of the scanner more than all the rest of it.
namespace zetaudiofilterscan {

/// The working VST3 modules in a configuration text, each once, in its order. What is not understood is
/// passed over.
std::vector<zetaudiofilterhost::PluginLocator> WorkingVST3Modules(std::string_view configurationText);

/// The same of a file; none when it is missing or cannot be read (traced).
std::vector<zetaudiofilterhost::PluginLocator> WorkingVST3ModulesOfFile(const std::wstring& path);

} // namespace zetaudiofilterscan
