#include "supervisor/lookahead/CulpritMemory.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <string_view>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/Fnv1a.h>
#include <zetscanprotocol/ScanRelay.h>

#include "TraceCategory.h"
#include "supervisor/process/PrivateFile.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleFileStamp;
using zetaudiopluginhost::BanReason;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

namespace {

constexpr std::string_view atWork = "-at-work-";
/// A host starts the next scanner well within this time, and nobody starts another scan within it.
constexpr std::chrono::seconds moment{1};
/// Thousands of reasons of ordinary length.
constexpr std::uint64_t maxFileSize = 16 << 20;

std::int64_t Now()
{
    using namespace std::chrono;
    return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

/// "NUMBER-START-"
std::string NameOf(const ProcessIdentity& process)
{
    return std::to_string(process.number) + "-" + std::to_string(process.start) + "-";
}

/// Takes that from the beginning of the text. Empty for a text of something else.
std::optional<ProcessIdentity> TakeProcess(std::string_view& text)
{
    const std::size_t first = text.find('-');
    const std::size_t second = first == text.npos ? text.npos : text.find('-', first + 1);
    if (second == text.npos)
        return std::nullopt;
    const auto number = zetcore::string::ParseNumber<std::uint64_t>(text.substr(0, first));
    const auto start =
        zetcore::string::ParseNumber<std::uint64_t>(text.substr(first + 1, second - first - 1));
    text.remove_prefix(second + 1);
    return number && start ? std::optional(ProcessIdentity{*number, *start}) : std::nullopt;
}

bool HasEnded(const ProcessIdentity& process)
{
    return IdentifyProcess(process.number) != process;
}

std::string NamesBeginning(const ProcessIdentity& host)
{
    return zetscanprotocol::relayPrefix + NameOf(host);
}

/// The beginning, and a number for the settings.
std::string NameFor(const ProcessIdentity& host, const std::wstring& settingsPath)
{
    return NamesBeginning(host) +
           std::to_string(zetcore::utility::Fnv1a(zetcore::string::UTF16to8(settingsPath)));
}

/// Nothing here is worth the end of a scan.
template<typename Action>
void TraceFailureOf(Action action)
{
    try {
        action();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

void Delete(const File& file)
{
    if (!file.FullPath().empty())
        TraceFailureOf([&] { file.Delete(); });
}

/// Calls the action with each file whose name begins so, and with the rest of the name.
template<typename Action>
void ForEachName(const Dir& folder, std::string_view beginning, Action action)
{
    std::error_code error;
    std::filesystem::directory_iterator entries(zetcore::filesupport::ToNativePath(folder.FullPath()), error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        const std::wstring name = zetcore::filesupport::FromNativePath(entries->path().filename());
        const std::string text = zetcore::string::UTF16to8(name);
        if (text.starts_with(beginning))
            action(File(folder, name), std::string_view(text).substr(beginning.size()));
    }
}

void DeleteThoseOfEndedHosts(const Dir& folder)
{
    ForEachName(folder, zetscanprotocol::relayPrefix, [](const File& file, std::string_view rest) {
        const std::optional<ProcessIdentity> host = TakeProcess(rest);
        if (host && HasEnded(*host))
            Delete(file);
    });
}

/// False also for a file that is not this user's, and for one that is not there.
bool WasTouchedAMomentAgo(const File& file)
{
    if (!IsPrivateFile(file))
        return false;
    std::error_code notThere;
    const auto time =
        std::filesystem::last_write_time(zetcore::filesupport::ToNativePath(file.FullPath()), notThere);
    return !notThere &&
           std::filesystem::file_time_type::clock::now() - time <= CulpritMemory::signOfLife + moment;
}

bool IsStillTrue(const BanReason& culprit)
{
    const std::int64_t age = Now() - culprit.info.time;
    return age >= 0 && age <= std::chrono::seconds(CulpritMemory::longestPause).count() &&
           culprit.info.stamp != ModuleFileStamp() &&
           zetaudiofilterhost::GetModuleFileStamp(culprit.locator) == culprit.info.stamp;
}

} // namespace

CulpritMemory::CulpritMemory(const std::optional<ProcessIdentity>& host,
                             const std::wstring& pluginSettingsPath,
                             const std::optional<ProcessIdentity>& scanner)
{
    TraceFailureOf([&] {
        const Dir folder = zetcore::filesupport::commondirs::RuntimeDir();
        if (host) {
            const std::string name = NameFor(*host, pluginSettingsPath);
            file = File(folder, zetcore::string::AsciiToUTF16(name));
            if (scanner)
                sign = File(folder,
                            zetcore::string::AsciiToUTF16(name + std::string(atWork) + NameOf(*scanner)));
            TakeSignsOfEnded(folder, name + std::string(atWork));
        }
        DeleteThoseOfEndedHosts(folder);
    });
}

/// A scanner that still runs is another scan's, which is about to notice that its host has gone on.
void CulpritMemory::TakeSignsOfEnded(const Dir& folder, const std::string& beginning)
{
    ForEachName(folder, beginning, [this](const File& found, std::string_view rest) {
        const std::optional<ProcessIdentity> scanner = TakeProcess(rest);
        if (!scanner || !HasEnded(*scanner))
            return;
        predecessorWasKilled = predecessorWasKilled || WasTouchedAMomentAgo(found);
        Delete(found);
    });
}

bool CulpritMemory::IsThereFor(const std::optional<ProcessIdentity>& host)
{
    bool isThere = false;
    TraceFailureOf([&] {
        if (host)
            ForEachName(zetcore::filesupport::commondirs::RuntimeDir(), NamesBeginning(*host),
                        [&](const File&, std::string_view rest) {
                            isThere = isThere || rest.find(atWork) == rest.npos;
                        });
    });
    return isThere;
}

std::vector<BanReason> CulpritMemory::Take() const
{
    std::vector<BanReason> culprits;
    TraceFailureOf([&] {
        if (file.FullPath().empty() || !file.Exists())
            return;
        culprits = zetaudiopluginhost::FromBanReasonsText(ReadPrivateFile(file, maxFileSize));
        std::erase_if(culprits, [](const BanReason& culprit) { return !IsStillTrue(culprit); });
        for (BanReason& culprit : culprits)
            culprit.info.time = 0;
    });
    TraceFailureOf([&] { file.Delete(); });
    if (!culprits.empty())
        zetcore::debug::FaultPoint("supervisor.culprits-taken");
    return culprits;
}

void CulpritMemory::Leave(std::vector<BanReason> culprits) const
{
    if (file.FullPath().empty())
        return;
    Forget();
    if (culprits.empty())
        return;
    TraceFailureOf([&] {
        for (BanReason& culprit : culprits)
            culprit.info.time = Now();
        WritePrivateFile(file, zetaudiopluginhost::ToBanReasonsText(culprits));
        zetcore::debug::FaultPoint("supervisor.culprits-left");
    });
}

void CulpritMemory::Forget() const
{
    Delete(file);
    Delete(sign);
}

void CulpritMemory::NoteAtWork() const
{
    if (sign.FullPath().empty())
        return;
    std::error_code notThere;
    std::filesystem::last_write_time(zetcore::filesupport::ToNativePath(sign.FullPath()),
                                     std::filesystem::file_time_type::clock::now(), notThere);
    if (notThere)
        TraceFailureOf([&] { WritePrivateFile(sign, {}); });
}

} // namespace zetaudiofilterscan
