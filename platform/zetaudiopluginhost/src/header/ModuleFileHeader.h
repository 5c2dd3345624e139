#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "header/ByteReader.h"
#include <zetcore/utility/Reason.h>

namespace zetaudiopluginhost {

enum class ModuleFormat
{
    Elf, ///< 64-bit, little-endian
    Pe,  ///< PE32+
};

enum class ModuleMachine
{
    X86_64,
    AArch64,
};

/// The kind of library that a process can load.
struct ModuleTarget
{
    ModuleFormat format = ModuleFormat::Elf;
    ModuleMachine machine = ModuleMachine::X86_64;
};
ModuleTarget NativeModuleTarget();

/// A name that a plug-in of some format exports. Converts from a name, which then is a function's.
struct EntryPoint
{
    constexpr EntryPoint(const char* exportedName, bool exportsData = false)
        : name(exportedName), isData(exportsData)
    {}

    std::string_view name;
    /// A variable; where a file's exports do not tell the difference (PE), it is not looked at.
    bool isData = false;
};

/// Why a process of the given kind cannot load the file as a plug-in with one of the entry points: "32-bit",
/// "truncated", "no plug-in entry point". Reads a few pieces of the file and believes none of them.
std::optional<zetcore::utility::Reason> WhyNotLoadable(ByteReader& file, const ModuleTarget& target,
                                                       const std::vector<EntryPoint>& entryPoints);

/// The two formats' own parts, for a file that begins with the format's magic number.
std::optional<zetcore::utility::Reason> WhyElfNotLoadable(ByteReader& file, ModuleMachine machine,
                                                          const std::vector<EntryPoint>& entryPoints);
std::optional<zetcore::utility::Reason> WhyPeNotLoadable(ByteReader& file, ModuleMachine machine,
                                                         const std::vector<EntryPoint>& entryPoints);

/// The file names of the libraries that a PE library needs at once, as far as the file tells them.
std::vector<std::string> PeImports(ByteReader& file);

} // namespace zetaudiopluginhost
