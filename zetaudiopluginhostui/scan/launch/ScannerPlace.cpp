#include "scan/launch/ScannerPlace.h"

#include <mutex>
#include <utility>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/Dir.h>

#include "scan/launch/ScannerProcess.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
using filesupport::Dir;
using filesupport::File;

struct ChosenFolder
{
    std::mutex mutex;
    std::wstring path;
};

ChosenFolder& Chosen()
{
    static ChosenFolder& folder = *new ChosenFolder;
    return folder;
}

std::wstring ChosenPath()
{
    const std::lock_guard lock(Chosen().mutex);
    return Chosen().path;
}

} // namespace

void SetScannerFolder(const std::wstring& path)
{
    std::wstring absolute = Dir(path).FullPath();
    const std::lock_guard lock(Chosen().mutex);
    Chosen().path = std::move(absolute);
}

File FindScannerProgram()
{
    if (const std::wstring chosen = ChosenPath(); !chosen.empty())
        return {Dir(chosen), ScannerFileName()};
    File besideProgram(filesupport::commondirs::ExecutableDir(), ScannerFileName());
    if (filesupport::commondirs::IsExecutableDirSet() || besideProgram.Exists())
        return besideProgram;
    if (const std::wstring library = OwnLibraryFolder(); !library.empty()) {
        for (const wchar_t* const onwards : {L"", L"/" ZET_PROGRAMS_FROM_LIBRARIES}) {
            File program(Dir(Dir(library + onwards).FullPath()), ScannerFileName());
            if (program.Exists())
                return program;
        }
    }
    return besideProgram;
}

} // namespace zetaudiopluginhostui
