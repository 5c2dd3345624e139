#include "module/ModuleResources.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <zetaudiopluginhostui/Module.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginhostui {
namespace {

class ModuleResources : public ::testing::Test
{
  protected:
    ModuleResources() { Initialize(); }
    ~ModuleResources() override { Terminate(); }

    static std::string Load(const std::string& name)
    {
        const auto bytes = GetModuleResources()->LoadResource(name, "xml");
        return {bytes.begin(), bytes.end()};
    }
    static std::string FileText(const std::string& name)
    {
        return zettesting::ReadAll(std::filesystem::path(ZET_RESOURCES_FOLDER) / name);
    }
};

TEST_F(ModuleResources, TheUnsupportedListIsTheFileByteForByte)
{
    EXPECT_EQ(Load("UnsupportedAudioPlugIns"), FileText("UnsupportedAudioPlugIns.xml"));
}

TEST_F(ModuleResources, TheUnsupportedListHasItsTabsAndLineEnds)
{
    EXPECT_EQ(Load("UnsupportedAudioPlugIns"),
              "<?xml version=\"1.0\" ?>\r\n"
              "<pluginlist version=\"4.0.0\">\r\n"
              "\t<plugin filename=\"mda Combo.dll\"/>\r\n"
              "\t<plugin filename=\"JCM900.dll\" uniqueid=\"12345678\" version=\"1234\"/>\r\n"
              "\t<plugin filename=\"Xhipsynth_beta.dll\" uniqueid=\"2020108656\" version=\"2300\"/>\r\n"
              "\t<plugin filename=\"HouseEffect.vst\" uniqueid=\"3091950960\" version=\"2400\"/>\r\n"
              "\t<plugin filename=\"BeatCounter.vst\" uniqueid=\"1114915700\" version=\"2400\"/>\r\n"
              "\t<plugin filename=\"Redline Monitor.vst\" uniqueid=\"1752199968\" version=\"2400\"/>\r\n"
              "</pluginlist>\r\n");
}

TEST_F(ModuleResources, TheLayoutArchivesAreTheFilesByteForByte)
{
    EXPECT_NE(Load("AUDIOPLUGINMANAGER"), "");
    EXPECT_EQ(Load("AUDIOPLUGINMANAGER"), FileText("AudioPluginManager.xml"));
    EXPECT_NE(Load("AUDIOPLUGINMANAGER.V7"), "");
    EXPECT_EQ(Load("AUDIOPLUGINMANAGER.V7"), FileText("AudioPluginManager.V7.xml"));
}

TEST_F(ModuleResources, AnUnknownNameGivesNothing)
{
    EXPECT_EQ(Load("NoSuchResource"), "");
}

} // namespace
} // namespace zetaudiopluginhostui
