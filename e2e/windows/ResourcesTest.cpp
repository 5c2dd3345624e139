#include <fstream>
#include <iterator>
#include <map>

#include <gmock/gmock.h>

#include "CompiledResources.h"

namespace {

std::string ReadAll(const std::string& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(Resources, OfTheModuleAreItsFilesByteForByteAndNothingElse)
{
    // Windows finds names and types whatever their case, and stores them in capitals.
    const std::map<std::string, std::string> files = {
        {"AUDIOPLUGINMANAGER", "AudioPluginManager.xml"},
        {"AUDIOPLUGINMANAGER.V7", "AudioPluginManager.V7.xml"},
        {"UNSUPPORTEDAUDIOPLUGINS", "UnsupportedAudioPlugIns.xml"},
    };
    std::vector<std::string> expected, names;
    for (const auto& [name, file] : files)
        expected.push_back(name);
    for (const CompiledResource& resource : ReadCompiledResources(ZET_MODULE_RESOURCES)) {
        names.push_back(resource.name);
        EXPECT_EQ(resource.type, "XML") << resource.name;
        const auto file = files.find(resource.name);
        if (file == files.end())
            continue;
        const std::string source = ReadAll(ZET_RESOURCE_SOURCES "/" + file->second);
        EXPECT_FALSE(source.empty()) << file->second;
        EXPECT_TRUE(resource.bytes == source) << resource.name;
    }
    EXPECT_THAT(names, testing::UnorderedElementsAreArray(expected));
}

} // namespace
