#include <zettesting/TestPlugins.h>

#include <cstdlib>
#include <stdexcept>

namespace zettesting {

namespace fs = std::filesystem;

std::string_view ModuleSuffix()
{
    return ZET_MODULE_SUFFIX;
}

std::string_view BundleLibrarySuffix()
{
    return ZET_BUNDLE_LIBRARY_SUFFIX;
}

fs::path BundleLibrary(const fs::path& bundle)
{
    return bundle / "Contents" / ZET_BUNDLE_ARCHITECTURE / bundle.stem().concat(BundleLibrarySuffix());
}

fs::path TestPluginsFolder()
{
    if (const char* folder = std::getenv("ZET_TEST_PLUGINS"); folder && *folder)
        return folder;
    // On Windows the build's own path may lack the drive.
    return fs::absolute(ZET_TEST_PLUGINS_FOLDER);
}

fs::path TestPlugin(std::string_view name)
{
    // The suffix tells the format, and no two plug-ins there have the same name.
    const fs::path wanted = TestPluginsFolder() / name;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(wanted.parent_path(), error))
        if (entry.path().stem() == wanted.filename())
            return entry.path();
    throw std::runtime_error("there is no test plug-in " + std::string(name) + " in " +
                             TestPluginsFolder().string() + ": build zettestplugins");
}

fs::path TestPluginLibrary(std::string_view name)
{
    const fs::path plugin = TestPlugin(name);
    return fs::is_directory(plugin) ? BundleLibrary(plugin) : plugin;
}

const std::vector<TestPluginFacts>& GoodTestPluginFacts()
{
    static const std::vector<TestPluginFacts> facts = {
        {"good/clap_effect", "Reed Delay", "Marrow Lane Audio", "1.2.0", "audio.marrowlane.reed-delay"},
        {"good/clap_instrument", "Warbler", "Hedgerow Sound", "0.8.11-beta", "audio.hedgerow.warbler", true},
        {"good/clap_several", "Cairn Hall", "Fennel and Flint", "4.0.1", "net.fennel-and-flint.cairn-hall",
         false, true},
        {"good/clap_several", "Cairn Org\xC3\xA3o \xE2\x98\x82", "Fennel and Flint", "4.0.2",
         "net.fennel-and-flint.cairn-organ", true, true},
        {"good/vst2_effect", "Pebble Delay", "Marrow Lane Audio", "1203", "1348617324"},
        {"good/vst2_main_entry", "Old Mill Chorus", "Hedgerow Sound", "110", "1332560744"},
        {"good/vst2_named_when_open", "Harbour Glow", "Marrow Lane Audio", "1410", "1215448940"},
        {"good/vst2_shell", "Quarry Gate", "Fennel and Flint", "3101", "1366443892", false, true},
        {"good/vst2_shell", "Quarry Tilt", "Fennel and Flint", "3102", "1366447212", false, true},
        {"good/vst2_shell", "Quarry Mono", "Fennel and Flint", "3103", "1366445422", true, true},
        {"good/vst2_synth", "Lantern Keys", "Marrow Lane Audio", "2100", "3092016747", true},
        {"good/vst3_factory1_only", "Plain Oak Tone", "Plain Oak", "", "0A4B1A1044D84E5B93A6C8D700000001"},
        {"good/vst3_several_classes", "Wicker Reverb", "Wicker Works", "3.1.0",
         "31C3E2AA5B0E4D6CA0D1F7E900000001"},
        {"good/vst3_several_classes", "Wicker Pad", "Wicker Works", "3.1.1",
         "31C3E2AA5B0E4D6CA0D1F7E900000003", true},
        {"good/vst3_several_classes", "Wicker \xC3\x89\x63ho \xE2\x98\x82 \xF0\x9D\x84\x9E", "Wicker Works",
         "3.1.2", "31C3E2AA5B0E4D6CA0D1F7E900000004"},
        {"good/vst3_several_classes", "Wicker Drum", "Wicker Guests", "3.1.3",
         "31C3E2AA5B0E4D6CA0D1F7E900000005", true},
        {"good/vst3_single_file", "Thimble Gain", "Copperbeech", "1.0.3", "C0BBE26B7D104A028B8E551200000002"},
        {"good/vst3_with_moduleinfo", "Drift Filter", "Saltmarsh Instruments", "1.4.2",
         "5A17A25B0D2F4F119E30C4A100000001"},
        {"good/vst3_with_moduleinfo_beside", "Ebb Organ", "Saltmarsh Instruments", "0.9.1",
         "5A17A25B0D2F4F119E30C4A100000002", true},
        {"good/vst3_without_moduleinfo", "Tidal Comp", "Copperbeech", "2.0.0.17",
         "C0BBE26B7D104A028B8E551200000001"},
    };
    return facts;
}

fs::path CopyTestPlugin(std::string_view name, const fs::path& folder, const fs::path& title)
{
    const fs::path plugin = TestPlugin(name);
    const fs::path copy = (folder / title).concat(plugin.extension().native());
    fs::copy(plugin, copy, fs::copy_options::recursive);
    if (fs::is_directory(copy))
        fs::rename(BundleLibrary(copy).replace_filename(BundleLibrary(plugin).filename()),
                   BundleLibrary(copy));
    return copy;
}

std::vector<fs::path> CopyTestPlugin(std::string_view name, const fs::path& folder, std::size_t count)
{
    std::vector<fs::path> copies;
    copies.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::string number = std::to_string(i);
        number.insert(0, number.size() < 5 ? 5 - number.size() : 0, '0');
        copies.push_back(CopyTestPlugin(name, folder, fs::path("copy" + number)));
    }
    return copies;
}

std::vector<fs::path> CopyTestPluginWithOddNames(std::string_view name, const fs::path& folder)
{
    std::vector<fs::path> copies;
    for (const fs::path& title : OddFileNames())
        copies.push_back(CopyTestPlugin(name, folder, title));
    return copies;
}

} // namespace zettesting
