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

/// As it is mangled: its length before it.
std::string Scope(const std::string& library)
{
    return std::to_string(library.size()) + library;
}

TEST(Exports, OfTheModuleAreThoseOfTheListAndNoOthers)
{
    const std::string module = "zetaudiopluginhostui";
    // A name of the module's, whatever is made of it: a type's name, a table, a member.
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
    // Another library's names, or the standard library's, would tie those who use it to our copy.
    for (const std::string library : {"zetcore", "zettransport", "zetmarshal", "zetaudiofilterhost",
                                      "zetaudiopluginhost", "zetui", "zetaudiopluginhostui"}) {
        int own = 0;
        for (const ElfFile::Symbol& symbol : ExportsOf(library)) {
            if (!symbol.isOwn)
                continue;
            ++own;
            // The system has no resources of its own: this is where they are looked for, by this name.
            if (library == "zetaudiopluginhostui" && symbol.name == "zetModuleResources")
                continue;
            EXPECT_THAT(symbol.name, testing::HasSubstr(Scope(library))) << library;
        }
        EXPECT_GT(own, 0) << library;
    }
}

} // namespace
