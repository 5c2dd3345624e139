#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "commands/Version.h"
#include "reference/Completions.h"
#include "reference/ManualPage.h"

namespace {

void Write(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace

/// Writes the manual page and the completions, for which shells have fixed names, into a folder.
int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::cerr << "usage: zetreference FOLDER\n";
        return 2;
    }
    try {
        using namespace zetaudiopluginmanager;
        const std::filesystem::path folder = arguments[1];
        const CommandText program = DescribeProgram();
        Write(folder / "zetaudiopluginmanager.1", WriteManualPage(program, VersionNumber()));
        Write(folder / "zetaudiopluginmanager", WriteBashCompletion(program));
        Write(folder / "_zetaudiopluginmanager", WriteZshCompletion(program));
        Write(folder / "zetaudiopluginmanager.fish", WriteFishCompletion(program));
    } catch (const std::exception& error) {
        std::cerr << "zetreference: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
