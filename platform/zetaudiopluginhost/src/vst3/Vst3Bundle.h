#pragma once

#include <optional>
#include <string>

#include <zetcore/filesupport/File.h>

namespace zetaudiopluginhost::vst3 {

/// Where the parts of a VST3 module are. A module is a bundle (a folder with Contents) or a single file.
struct Vst3Files
{
    /// The library for this process; empty when there is none, and then `problem` says why.
    std::wstring library;
    std::string problem;
    /// Its description, where it has one.
    std::optional<zetcore::filesupport::File> moduleInfo;
};

Vst3Files FindVst3Files(const std::wstring& modulePath);

} // namespace zetaudiopluginhost::vst3
