// Others can link with the exports, and with nothing else.
#include <algorithm>
#include <fstream>
#include <map>
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

const std::string module = "zetaudiopluginhostui";

std::set<std::string> ListedExports()
{
    std::set<std::string> listed;
    std::ifstream list(ZET_EXPORTS_LIST);
    for (std::string line; std::getline(list, line);)
        if (!line.empty() && line.front() != '#')
            listed.insert(line);
    return listed;
}

/// What a library exports of the module's names.
std::set<std::string> ModuleNamesIn(const std::string& library)
{
    // The name may be part of another one, such as a table's or a member's.
    const std::regex name("_Z(T[ISTVC]|Thn[0-9]+_|Tv0_n[0-9]+_)?N?K?" + Scope(module) + ".*");
    std::set<std::string> names;
    for (const ElfFile::Symbol& symbol : ExportsOf(library))
        if ((symbol.isOwn && library == module) || std::regex_match(symbol.name, name))
            names.insert(symbol.name);
    return names;
}

TEST(Exports, OfTheModuleAreThoseOfTheListAndNoOthers)
{
    const auto listed = ListedExports();
    ASSERT_THAT(listed, testing::Not(testing::IsEmpty()));
    EXPECT_THAT(ModuleNamesIn(module), testing::ElementsAreArray(listed));
}

TEST(Exports, OfTheScanAloneAreTheModulesWithoutTheDialog)
{
    auto expected = ListedExports();
    // The scan alone draws nothing, so it has no dialog and no layout archives.
    EXPECT_EQ(std::erase_if(expected,
                            [](const std::string& name) {
                                return name == "zetModuleResources" ||
                                       name.find("DoPluginManagerDialog") != std::string::npos;
                            }),
              2u);
    EXPECT_THAT(ModuleNamesIn("zetaudiopluginscan"), testing::ElementsAreArray(expected));
}

TEST(Exports, OfEachLibraryAreItsOwn)
{
    // If we exported names of another library, our users would be bound to our copy of it.
    const std::map<std::string, std::vector<std::string>> libraries{
        {"zetcore", {}},
        {"zettransport", {}},
        {"zetmarshal", {}},
        {"zetaudiofilterhost", {}},
        {"zetaudiopluginhost", {}},
        {"zetui", {}},
        {module, {}},
        // The scan alone is made of the module's sources and of the toolkit's.
        {"zetaudiopluginscan", {module, "zetui"}}};
    for (const auto& [library, others] : libraries) {
        std::string scopes = Scope(library);
        for (const std::string& other : others)
            scopes += "|" + Scope(other);
        // Neither the standard library's templates nor Boost's are among them.
        const std::regex ownName("_Z(T[ISTVC]|Thn[0-9]+_|Tv0_n[0-9]+_|GV)?Z?N?K?(" + scopes + ").*");
        int own = 0;
        for (const ElfFile::Symbol& symbol : ExportsOf(library)) {
            // The system has no resources. Ours are looked for under this name.
            if (symbol.name == "zetModuleResources")
                continue;
            ++own;
            EXPECT_TRUE(std::regex_match(symbol.name, ownName)) << library << ": " << symbol.name;
        }
        EXPECT_GT(own, 0) << library;
    }
}

} // namespace
