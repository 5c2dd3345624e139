#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zettesting {

/// The folder with good/ and bad/, built by the target `zettestplugins` (a test program that uses them
/// depends on it). The environment's ZET_TEST_PLUGINS says where it is; without it, the build folder.
std::filesystem::path TestPluginsFolder();

/// "good/vst2_effect", for example: the module's file, or the bundle's folder, with its suffix. Throws
/// std::runtime_error when it has not been built.
std::filesystem::path TestPlugin(std::string_view name);

/// The library that gets loaded: inside the bundle, or the module itself.
std::filesystem::path TestPluginLibrary(std::string_view name);

/// One plug-in that a scan of good/ must find, as the plug-in itself tells it.
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

/// All of them, in the order of `plugin` and then of the module itself.
const std::vector<TestPluginFacts>& GoodTestPluginFacts();

/// ".so" or ".dll".
std::string_view ModuleSuffix();
/// That of the library in a VST3 bundle: ".so" or ".vst3".
std::string_view BundleLibrarySuffix();
/// Where a VST3 bundle that has its own name has its library for this machine.
std::filesystem::path BundleLibrary(const std::filesystem::path& bundle);

// Files that look like plug-ins and are none, or are ones with names that are hard to carry. Each is made in
// `folder`, which exists; its path is returned.

std::filesystem::path MakeTextModule(const std::filesystem::path& folder);
std::filesystem::path MakeEmptyModule(const std::filesystem::path& folder);
/// The first `bytes` of a good module; by default so many that all its headers are whole.
std::filesystem::path MakeTruncatedModule(const std::filesystem::path& folder, std::size_t bytes = 4096);
/// The header of a library of the 32-bit machine of the same family, and zeros.
std::filesystem::path Make32BitModule(const std::filesystem::path& folder);
/// A good module that says it is for AArch64.
std::filesystem::path MakeOtherMachineModule(const std::filesystem::path& folder);
/// The other system's format under this system's suffix: PE as .so, or ELF as .dll.
std::filesystem::path MakeOtherSystemModule(const std::filesystem::path& folder);

/// Copies a plug-in (a bundle with all in it, its library renamed with it) to `folder`/`title` plus suffix.
std::filesystem::path CopyTestPlugin(std::string_view name, const std::filesystem::path& folder,
                                     const std::filesystem::path& title);
/// `count` copies named copy00000 and up, in order; real copies, since the system takes two names of one
/// file for one library.
std::vector<std::filesystem::path> CopyTestPlugin(std::string_view name, const std::filesystem::path& folder,
                                                  std::size_t count);
/// Copies under names with spaces, quotes, non-Latin letters and, where the system allows them, newlines
/// and units that are not valid Unicode.
std::vector<std::filesystem::path> CopyTestPluginWithOddNames(std::string_view name,
                                                              const std::filesystem::path& folder);
/// File names without suffix, as this system allows them.
std::vector<std::filesystem::path> OddFileNames();

/// A folder with a link to itself inside, a link to its parent, and two links with a module's suffix that
/// lead to one another. Gives the folder. Under Wine, which has no links, the folder is empty.
std::filesystem::path MakeLinkCycle(const std::filesystem::path& folder);
/// False, without a link, under Wine.
bool MakeFolderLink(const std::filesystem::path& target, const std::filesystem::path& link);

} // namespace zettesting
