#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetaudiopluginhost/Export.h>
#include <zetcore/config/Localizer.h>

/// Sentences that say why something did not work. Files, logs, traces and the command line have them in
/// English; a window says them in the user's language. A ban's own reasons are in PluginFailure.h.
namespace zetaudiopluginhost::reasons {

inline constexpr std::string_view noScanner =
    "$$$/AudioPluginManager/Reason/NoScanner=There is no scanner program: @0";
inline constexpr std::string_view scannerIsSilent =
    "$$$/AudioPluginManager/Reason/ScannerIsSilent=The scanner program did not tell within @0 seconds where "
    "it listens: @1";
inline constexpr std::string_view scannerExited = "$$$/AudioPluginManager/Reason/ScannerExited=The scanner "
                                                  "program ended with exit status @0 before it told "
                                                  "where it listens: @1";
inline constexpr std::string_view scannerWasEnded =
    "$$$/AudioPluginManager/Reason/ScannerWasEnded=The scanner program was ended by signal @0 before it told "
    "where it listens: @1";
inline constexpr std::string_view scannerEnded = "$$$/AudioPluginManager/Reason/ScannerEnded=The scanner "
                                                 "program ended before it told where it listens: @0";
inline constexpr std::string_view scannerIsDeaf =
    "$$$/AudioPluginManager/Reason/ScannerIsDeaf=The scanner does not answer at port @0 of @1, where it said "
    "that it listens";
inline constexpr std::string_view noSharedMemory = "$$$/AudioPluginManager/Reason/NoSharedMemory=The shared "
                                                   "memory \"@0\" in which the scanner tells where it "
                                                   "listens cannot be had, or another application holds it";
inline constexpr std::string_view tooManyRestarts =
    "$$$/AudioPluginManager/Reason/TooManyRestarts=The scanner was restarted @0 times without getting on; "
    "plug-ins not scanned: @1";
inline constexpr std::string_view lastExited =
    "$$$/AudioPluginManager/Reason/LastExited=@1. The last one ended with exit status @0";
inline constexpr std::string_view lastWasEnded =
    "$$$/AudioPluginManager/Reason/LastWasEnded=@1. The last one was ended by signal @0";
inline constexpr std::string_view lastEnded =
    "$$$/AudioPluginManager/Reason/LastEnded=@0. The last one ended";
inline constexpr std::string_view lastOutput =
    "$$$/AudioPluginManager/BanReason/LastOutput=@0; its last output: @1";
inline constexpr std::string_view unknownException =
    "$$$/AudioPluginManager/Reason/UnknownException=An unknown exception ended the scan";
inline constexpr std::string_view noWorker =
    "$$$/AudioPluginManager/Reason/NoWorker=the worker process could not be started";
inline constexpr std::string_view noWorkerBecause =
    "$$$/AudioPluginManager/Reason/NoWorkerBecause=the worker process could not be started: @0";
inline constexpr std::string_view workersEnd =
    "$$$/AudioPluginManager/Reason/WorkersEnd=the worker processes end before they load anything";
inline constexpr std::string_view inNoFolder =
    "$$$/AudioPluginManager/Reason/InNoFolder=lies in no folder that is scanned";

// Why a file is no plug-in of this system.
inline constexpr std::string_view missing = "$$$/AudioPluginManager/Reason/Missing=the file does not exist";
inline constexpr std::string_view deadLink =
    "$$$/AudioPluginManager/Reason/DeadLink=a link that leads nowhere";
inline constexpr std::string_view folder = "$$$/AudioPluginManager/Reason/Folder=a folder";
inline constexpr std::string_view noBundle =
    "$$$/AudioPluginManager/Reason/NoBundle=a folder that is no bundle";
inline constexpr std::string_view unreadableBundle =
    "$$$/AudioPluginManager/Reason/UnreadableBundle=the bundle cannot be read: @0";
inline constexpr std::string_view emptyBundle =
    "$$$/AudioPluginManager/Reason/EmptyBundle=a bundle without a library for this machine (@0)";
inline constexpr std::string_view noRegularFile =
    "$$$/AudioPluginManager/Reason/NoRegularFile=not a regular file";
inline constexpr std::string_view otherTechnology =
    "$$$/AudioPluginManager/Reason/OtherTechnology=a plug-in of a technology that this system does not have";
inline constexpr std::string_view emptyFile = "$$$/AudioPluginManager/Reason/EmptyFile=an empty file";
inline constexpr std::string_view textFile = "$$$/AudioPluginManager/Reason/TextFile=a text file";
inline constexpr std::string_view noLibrary = "$$$/AudioPluginManager/Reason/NoLibrary=not a library";
inline constexpr std::string_view programFile =
    "$$$/AudioPluginManager/Reason/ProgramFile=a program or an object file, not a library";
inline constexpr std::string_view truncated = "$$$/AudioPluginManager/Reason/Truncated=truncated";
inline constexpr std::string_view damaged = "$$$/AudioPluginManager/Reason/Damaged=damaged";
inline constexpr std::string_view is32Bit = "$$$/AudioPluginManager/Reason/Is32Bit=32-bit";
inline constexpr std::string_view otherMachine =
    "$$$/AudioPluginManager/Reason/OtherMachine=for another machine (@0)";
inline constexpr std::string_view otherSystem =
    "$$$/AudioPluginManager/Reason/OtherSystem=for another system (@0)";
inline constexpr std::string_view noEntryPoint =
    "$$$/AudioPluginManager/BanReason/NoEntryPoint=no plug-in entry point";

/// The sentence in English, for files, logs and traces.
ZETAUDIOPLUGINHOST_API std::string InEnglish(std::string_view key,
                                             const std::vector<std::string>& arguments = {});

/// Says in the table's language what was written down in English: the sentences above, messages of
/// `file_exception`, and the system's words for its most frequent errors. What it does not know stays as it
/// is, inside a sentence that it knows as well. UTF-8.
ZETAUDIOPLUGINHOST_API std::string InLanguage(const std::string& english,
                                              const zetcore::config::Localizer& language);

} // namespace zetaudiopluginhost::reasons
