#include "scan/ScannerProgram.h"

#include <fstream>
#include <string>

#include <elf.h>
#include <unistd.h>

#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

/// The first bytes of the file, which tell the system and the processor that a program is made for.
std::string Beginning(const std::string& program)
{
    std::string header(EI_NIDENT + 4, '\0');
    std::ifstream stream(program, std::ios::binary);
    stream.read(header.data(), static_cast<std::streamsize>(header.size()));
    header.resize(static_cast<std::size_t>(stream.gcount()));
    return header;
}

/// The magic number, word size, byte order and processor of a program file. Empty for any other file.
std::string Kind(const std::string& header)
{
    const bool isProgram = header.size() == EI_NIDENT + 4 && header.starts_with(ELFMAG);
    return isProgram ? header.substr(0, EI_VERSION) + header.substr(EI_NIDENT + 2) : std::string();
}

} // namespace

std::wstring ScannerProgramPath()
{
    return zetaudiopluginhostui::AudioPluginScan::GetScannerProgram().FullPath();
}

ScannerProgramState LookAtScannerProgram()
{
    const std::string program = zetcore::string::UTF16to8(ScannerProgramPath());
    if (::access(program.c_str(), F_OK) != 0)
        return ScannerProgramState::Missing;
    if (::access(program.c_str(), X_OK) != 0)
        return ScannerProgramState::NotExecutable;
    const std::string header = Beginning(program);
    const bool isForThisSystem =
        header.starts_with("#!") || Kind(header) == Kind(Beginning("/proc/self/exe"));
    return isForThisSystem ? ScannerProgramState::Startable : ScannerProgramState::OtherSystem;
}

} // namespace zetaudiopluginmanager
