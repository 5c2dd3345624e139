// Others can link with the exports, and with nothing else.
#include <algorithm>
#include <fstream>
#include <regex>
#include <set>

#include <gmock/gmock.h>

#include "ElfFile.h"

namespace {

std::vector<ElfFile::Symbol> ExportsOf(const std::string& library)
{
    const auto file = ElfFile::Read(std::filesystem::path(ZET_BUILD) / "bin" / ("lib" + library + ".so"));
    return file ? file->Exports() : std::vector<ElfFile::Symbol>();
}

/// The mangled form of a name has the length before it.
std::string Scope(const std::string& library)
{
    return std::to_string(library.size()) + library;
}

TEST(Exports, OfTheModuleAreThoseOfTheListAndNoOthers)
{
    const std::string module = "zetaudiopluginhostui";
    // The name may be part of another one, such as a table's or a member's.
    const std::regex ownName("_Z(T[ISTVC]|Thn[0-9]+_|Tv0_n[0-9]+_)?N?K?" + Scope(module) + ".*");
    std::set<std::string> exports;
    for (const ElfFile::Symbol& symbol : ExportsOf(module))
        if (symbol.isOwn || std::regex_match(symbol.name, ownName))
            exports.insert(symbol.name);
    std::set<std::string> listed;
    std::ifstream list(ZET_EXPORTS_LIST);
    for (std::string line; std::getline(list, line);)
        if (!line.empty() && line.front() != '#')
            listed.insert(line);
    ASSERT_THAT(listed, testing::Not(testing::IsEmpty()));
    EXPECT_THAT(exports, testing::ElementsAreArray(listed));
}

TEST(Exports, OfEachLibraryAreItsOwn)
{
    // If we exported names of another library, our users would be bound to our copy of it.
    for (const std::string library : {"zetcore", "zettransport", "zetmarshal", "zetaudiofilterhost",
                                      "zetaudiopluginhost", "zetui", "zetaudiopluginhostui"}) {
        int own = 0;
        for (const ElfFile::Symbol& symbol : ExportsOf(library)) {
            if (!symbol.isOwn)
                continue;
            ++own;
            // The system has no resources. Ours are looked for under this name.
            if (library == "zetaudiopluginhostui" && symbol.name == "zetModuleResources")
                continue;
            EXPECT_THAT(symbol.name, testing::HasSubstr(Scope(library))) << library;
        }
        EXPECT_GT(own, 0) << library;
    }
}

} // namespace
