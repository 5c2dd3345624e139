#include <algorithm>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "CompiledResources.h"

namespace {

using testing::HasSubstr;

// Windows' numbers for types of resources.
constexpr const char* icon = "#3";
constexpr const char* groupOfIcons = "#14";
constexpr const char* version = "#16";

class ProgramResources : public testing::TestWithParam<std::string>
{
  protected:
    std::vector<CompiledResource> OfType(const std::string& type) const
    {
        auto resources = ReadCompiledResources(ZET_PROGRAM_RESOURCES "/" + GetParam() + ".res");
        std::erase_if(resources, [&type](const CompiledResource& each) { return each.type != type; });
        return resources;
    }
};

/// The text as Windows stores it, with two bytes for each character.
std::string Wide(std::string_view text)
{
    std::string wide;
    for (const char character : text)
        wide += {character, '\0'};
    return wide;
}

/// A name and its value as the version's resource has them: the value begins at a multiple of four.
void ExpectProperty(const std::string& properties, std::string_view name, std::string_view value)
{
    const std::string wideName = Wide(name) + std::string(2, '\0');
    const std::size_t place = properties.find(wideName);
    ASSERT_NE(place, std::string::npos) << name;
    const std::size_t start = (place + wideName.size() + 3) / 4 * 4;
    const std::string expected = Wide(value) + std::string(2, '\0');
    EXPECT_EQ(properties.substr(start, expected.size()), expected) << name;
}

TEST_P(ProgramResources, TellNameVersionAndCopyright)
{
    const auto found = OfType(version);
    ASSERT_EQ(found.size(), 1u);
    const std::string& properties = found.front().bytes;
    ExpectProperty(properties, "FileVersion", ZET_VERSION);
    ExpectProperty(properties, "ProductVersion", ZET_VERSION);
    ExpectProperty(properties, "ProductName", "Audio Plug-In Manager");
    ExpectProperty(properties, "OriginalFilename", GetParam() + ".exe");
    EXPECT_THAT(properties, HasSubstr(Wide("Copyright (c) ")));
    EXPECT_THAT(properties, HasSubstr(Wide("Audio Plug-In Manager")));
}

TEST_P(ProgramResources, HoldTheIconInAllItsSizes)
{
    std::ifstream stream(ZET_WINDOWS_ICON, std::ios::binary);
    const std::string file{std::istreambuf_iterator<char>(stream), {}};
    ASSERT_GT(file.size(), 6u) << ZET_WINDOWS_ICON;
    const auto pictures = OfType(icon);
    EXPECT_EQ(pictures.size(), static_cast<unsigned char>(file[4]));
    for (const CompiledResource& picture : pictures)
        EXPECT_NE(file.find(picture.bytes), std::string::npos) << picture.name;
    const auto groups = OfType(groupOfIcons);
    ASSERT_EQ(groups.size(), 1u);
    EXPECT_EQ(groups.front().name, "IDI_ICON1");
}

INSTANTIATE_TEST_SUITE_P(Each, ProgramResources,
                         testing::Values("zetaudiopluginmanager", "zetaudiofilterscan"),
                         [](const auto& program) { return program.param; });

} // namespace
