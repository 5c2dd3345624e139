#include <algorithm>
#include <fstream>

#include <gmock/gmock.h>

#include "PortableExecutable.h"
#include "ProgramFolder.h"

namespace {

std::vector<std::string> ReadLines(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        if (!line.empty() && line.front() != '#')
            lines.push_back(line);
    return lines;
}

TEST(Exports, AreThoseOfTheListAndNoOthers)
{
    std::vector<std::string> exports =
        PortableExecutable(ProgramFolder() / "zetaudiopluginhostui.dll").Exports();
    std::sort(exports.begin(), exports.end());
    std::vector<std::string> listed = ReadLines(ZET_EXPORTS_LIST);
    std::sort(listed.begin(), listed.end());
    ASSERT_THAT(listed, testing::Not(testing::IsEmpty()));
    EXPECT_THAT(exports, testing::ElementsAreArray(listed));
}

TEST(Exports, OfEachLibraryAreItsOwn)
{
    // If we exported names of another library, our users would be bound to our copy of it.
    for (const std::string library : {"zetcore", "zettransport", "zetmarshal", "zetaudiofilterhost",
                                      "zetaudiopluginhost", "zetui", "zetaudiopluginhostui"}) {
        const std::vector<std::string> exports =
            PortableExecutable(ProgramFolder() / (library + ".dll")).Exports();
        EXPECT_THAT(exports, testing::Not(testing::IsEmpty())) << library;
        const std::string ownNamespace = std::to_string(library.size()) + library;
        for (const std::string& name : exports)
            EXPECT_THAT(name, testing::HasSubstr(ownNamespace)) << library;
    }
}

} // namespace
