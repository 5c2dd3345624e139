#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zettesting {

/// The folder with good/ and bad/, which the target `zettestplugins` builds; a test program that uses them
/// must depend on it. The environment variable ZET_TEST_PLUGINS may name another folder.
std::filesystem::path TestPluginsFolder();

/// The path of a sample, for example of "good/vst2_effect": the module's file or the bundle's folder, with
/// its suffix. Throws `std::runtime_error` when it has not been built.
std::filesystem::path TestPlugin(std::string_view name);

/// The library that gets loaded: in a bundle the one inside, otherwise the module itself.
std::filesystem::path TestPluginLibrary(std::string_view name);

/// The facts about one plug-in of good/, as the plug-in itself tells them. A scan must find it.
struct TestPluginFacts
{
    std::string plugin; ///< for `TestPlugin`
    std::string name;   ///< UTF-8
    std::string vendor;
    std::string version;  ///< VST2: the number in decimal; empty when it tells none
    std::string uniqueId; ///< VST2: 32 bits, unsigned, in decimal; VST3: 32 upper-case hexadecimal digits
    bool synth = false;
    bool inShell = false; ///< one of a VST2 shell's plug-ins, or of several in a CLAP file
};

/// The facts about all good plug-ins, ordered by `plugin`, and inside one module as the module orders them.
const std::vector<TestPluginFacts>& GoodTestPluginFacts();

/// ".so" or ".dll".
std::string_view ModuleSuffix();
/// The suffix of the library in a VST3 bundle: ".so" or ".vst3".
std::string_view BundleLibrarySuffix();
/// The place of the library for this machine in a VST3 bundle with this name.
std::filesystem::path BundleLibrary(const std::filesystem::path& bundle);

// These functions make files that look like plug-ins and are none, and plug-ins with difficult names. Each
// makes its file in `folder`, which must exist, and returns the path.

std::filesystem::path MakeTextModule(const std::filesystem::path& folder);
std::filesystem::path MakeEmptyModule(const std::filesystem::path& folder);
/// The first `bytes` of a good module. By default all its headers are whole.
std::filesystem::path MakeTruncatedModule(const std::filesystem::path& folder, std::size_t bytes = 4096);
/// The header of a library of the 32-bit machine of the same family, and zeros.
std::filesystem::path Make32BitModule(const std::filesystem::path& folder);
/// A good module whose header says that it is for AArch64.
std::filesystem::path MakeOtherMachineModule(const std::filesystem::path& folder);
/// The other system's format under this system's suffix: PE as .so, or ELF as .dll.
std::filesystem::path MakeOtherSystemModule(const std::filesystem::path& folder);

/// Copies a plug-in to `folder`/`title` plus suffix. Of a bundle, all is copied, and its library is renamed,
/// too.
std::filesystem::path CopyTestPlugin(std::string_view name, const std::filesystem::path& folder,
                                     const std::filesystem::path& title);
/// Makes `count` copies, named copy00000 and up, in order. They are real copies, because the system takes two
/// names of one file for one library.
std::vector<std::filesystem::path> CopyTestPlugin(std::string_view name, const std::filesystem::path& folder,
                                                  std::size_t count);
/// Makes copies under names with spaces, quotes, non-Latin letters and, where the system allows them,
/// newlines and units that are not valid Unicode.
std::vector<std::filesystem::path> CopyTestPluginWithOddNames(std::string_view name,
                                                              const std::filesystem::path& folder);
/// The names that this system allows, without suffix.
std::vector<std::filesystem::path> OddFileNames();

/// Makes a folder with a link to itself, a link to its parent, and two links with a module's suffix that lead
/// to each other. Returns the folder. Wine has no links; there the folder is empty.
std::filesystem::path MakeLinkCycle(const std::filesystem::path& folder);
/// Under Wine it makes no link and returns false.
bool MakeFolderLink(const std::filesystem::path& target, const std::filesystem::path& link);

} // namespace zettesting
