#include <zetaudiopluginhost/ReasonSentences.h>

#include <array>

#include "banned/SentencePattern.h"

namespace zetaudiopluginhost::reasons {

using zetcore::config::Localizer;

namespace {

/// A sentence that is more general stands behind those that it would match, too.
constexpr std::array known = std::to_array<std::string_view>({
    noScanner,
    scannerIsSilent,
    scannerExited,
    scannerWasEnded,
    scannerEnded,
    scannerIsDeaf,
    noSharedMemory,
    lastOutput,
    lastExited,
    lastWasEnded,
    lastEnded,
    tooManyRestarts,
    unknownException,
    noWorker,
    noWorkerBecause,
    workersEnd,
    inNoFolder,
    missing,
    deadLink,
    folder,
    noBundle,
    unreadableBundle,
    emptyBundle,
    noRegularFile,
    otherTechnology,
    emptyFile,
    textFile,
    noLibrary,
    programFile,
    truncated,
    damaged,
    is32Bit,
    otherMachine,
    otherSystem,
    noEntryPoint,
    // Messages of file_exception.
    "$$$/AudioPluginManager/Reason/File/Read=Cannot read \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/Write=Cannot write \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/Delete=Cannot delete \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/LookAt=Cannot look at \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/StartScanner=Cannot start the scanner program \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/CreateFolder=Cannot create folder \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/UseFolder=Cannot use folder \"@0\": @1",
    "$$$/AudioPluginManager/Reason/File/Other=Cannot @0 \"@1\": @2",
    // The words of the system's loader.
    "$$$/AudioPluginManager/Reason/Load/Open=@0: cannot open shared object file: @1",
    "$$$/AudioPluginManager/Reason/Load/Read=@0: cannot read file data: @1",
    "$$$/AudioPluginManager/Reason/Load/Header=@0: invalid ELF header",
    "$$$/AudioPluginManager/Reason/Load/Short=@0: file too short",
    "$$$/AudioPluginManager/Reason/Load/Class=@0: wrong ELF class: @1",
    "$$$/AudioPluginManager/Reason/Load/SymbolVersion=@0: undefined symbol: @1, version @2",
    "$$$/AudioPluginManager/Reason/Load/Symbol=@0: undefined symbol: @1",
    "$$$/AudioPluginManager/Reason/Load/Version=@0: version `@1' not found (required by @2)",
    "$$$/AudioPluginManager/Reason/Load/Tls=@0: cannot allocate memory in static TLS block",
    "$$$/AudioPluginManager/Reason/Load/Segment=@0: failed to map segment from shared object: @1",
    "$$$/AudioPluginManager/Reason/Load/Segment2=@0: failed to map segment from shared object",
    "$$$/AudioPluginManager/Reason/Load/Stack=@0: cannot enable executable stack as shared object requires: "
    "@1",
    "$$$/AudioPluginManager/Reason/Load/Unknown=the system cannot load it",
    // The system's errors.
    "$$$/AudioPluginManager/Reason/System/NotPermitted=Operation not permitted",
    "$$$/AudioPluginManager/Reason/System/NoSuchFile=No such file or directory",
    "$$$/AudioPluginManager/Reason/System/InputOutput=Input/output error",
    "$$$/AudioPluginManager/Reason/System/NoDeviceOrAddress=No such device or address",
    "$$$/AudioPluginManager/Reason/System/ExecFormat=Exec format error",
    "$$$/AudioPluginManager/Reason/System/TryAgainLater=Resource temporarily unavailable",
    "$$$/AudioPluginManager/Reason/System/NoMemory=Cannot allocate memory",
    "$$$/AudioPluginManager/Reason/System/PermissionDenied=Permission denied",
    "$$$/AudioPluginManager/Reason/System/Busy=Device or resource busy",
    "$$$/AudioPluginManager/Reason/System/NoDevice=No such device",
    "$$$/AudioPluginManager/Reason/System/NotADirectory=Not a directory",
    "$$$/AudioPluginManager/Reason/System/IsADirectory=Is a directory",
    "$$$/AudioPluginManager/Reason/System/InvalidArgument=Invalid argument",
    "$$$/AudioPluginManager/Reason/System/SystemFilesOpen=Too many open files in system",
    "$$$/AudioPluginManager/Reason/System/FilesOpen=Too many open files",
    "$$$/AudioPluginManager/Reason/System/FileInUse=Text file busy",
    "$$$/AudioPluginManager/Reason/System/FileTooLarge=File too large",
    "$$$/AudioPluginManager/Reason/System/NoSpace=No space left on device",
    "$$$/AudioPluginManager/Reason/System/ReadOnly=Read-only file system",
    "$$$/AudioPluginManager/Reason/System/ManyLinks=Too many levels of symbolic links",
    "$$$/AudioPluginManager/Reason/System/LongName=File name too long",
    "$$$/AudioPluginManager/Reason/System/NotConnected=Transport endpoint is not connected",
    "$$$/AudioPluginManager/Reason/System/TimedOut=Connection timed out",
    "$$$/AudioPluginManager/Reason/System/Refused=Connection refused",
    "$$$/AudioPluginManager/Reason/System/Unreachable=Network is unreachable",
    "$$$/AudioPluginManager/Reason/System/NoRoute=No route to host",
    "$$$/AudioPluginManager/Reason/System/Stale=Stale file handle",
    "$$$/AudioPluginManager/Reason/System/Quota=Disk quota exceeded",
    "$$$/AudioPluginManager/Reason/System/WinAccessDenied=Access is denied",
    "$$$/AudioPluginManager/Reason/System/WinFileNotFound=The system cannot find the file specified",
    "$$$/AudioPluginManager/Reason/System/WinPathNotFound=The system cannot find the path specified",
    "$$$/AudioPluginManager/Reason/System/WinModuleNotFound=The specified module could not be found",
    "$$$/AudioPluginManager/Reason/System/WinProcedureNotFound=The specified procedure could not be found",
});

} // namespace

std::string InEnglish(std::string_view key, const std::vector<std::string>& arguments)
{
    // A localiser without a table gives the default texts, which are English.
    static const Localizer english;
    return english.Localize(key, arguments);
}

std::string InLanguage(const std::string& english, const Localizer& language)
{
    for (const std::string_view key : known) {
        auto arguments = MatchSentence(key.substr(key.find('=') + 1), english);
        if (!arguments)
            continue;
        // Each argument is shorter than its sentence, so this ends.
        for (std::string& argument : *arguments)
            argument = InLanguage(argument, language);
        return language.Localize(key, *arguments);
    }
    return english;
}

} // namespace zetaudiopluginhost::reasons
