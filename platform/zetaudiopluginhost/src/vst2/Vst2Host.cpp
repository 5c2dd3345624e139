#include "vst2/Vst2Host.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <deque>
#include <mutex>
#include <string_view>

#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>
#include <zetcore/string/UtfUnits.h>
#include <zetcore/utility/ClientName.h>

namespace zetaudiopluginhost::vst2 {

namespace {

constexpr std::intptr_t hostVersion = 1000;

struct HostState
{
    std::atomic<std::int32_t> currentId{0};
    std::atomic<const char*> folder{""};
    /// A text that a plug-in was given stays valid, because some plug-ins keep the pointer in modules that
    /// stay loaded.
    std::mutex foldersMutex;
    std::deque<std::string> folders;

    const char* Keep(std::string path)
    {
        const std::lock_guard lock(foldersMutex);
        const auto known = std::find(folders.begin(), folders.end(), path);
        return known != folders.end() ? known->c_str() : folders.emplace_back(std::move(path)).c_str();
    }
};

HostState& State()
{
    static HostState state;
    return state;
}

std::intptr_t WriteText(void* pointer, std::size_t capacity, std::string_view text)
{
    if (pointer == nullptr)
        return 0;
    text = zetcore::string::CutUTF8(text, capacity - 1);
    std::memcpy(pointer, text.data(), text.size());
    static_cast<char*>(pointer)[text.size()] = 0;
    return 1;
}

std::string ClientName()
{
    return zetcore::string::UTF16to8(zetcore::utility::GetClientName());
}

std::intptr_t CanDo(const void* pointer)
{
    static constexpr std::array<std::string_view, 10> abilities = {
        "sendVstEvents", "sendVstMidiEvent", "sendVstTimeInfo", "receiveVstEvents", "receiveVstMidiEvent",
        "supplyIdle",    "sizeWindow",       "acceptIOChanges", "shellCategory",    "supportShell"};
    if (pointer == nullptr)
        return 0;
    const std::string_view asked = static_cast<const char*>(pointer);
    return std::find(abilities.begin(), abilities.end(), asked) != abilities.end() ? 1 : 0;
}

std::intptr_t CurrentTime()
{
    // One for each thread that asks: plug-ins own it until they ask again.
    thread_local TimeInfo time;
    time = {};
    time.sampleRate = Vst2Host::sampleRate;
    time.tempo = 120;
    time.timeSignatureNumerator = 4;
    time.timeSignatureDenominator = 4;
    time.flags = TimeTempoValid | TimeSignatureValid | TimeQuarterPositionValid;
    return reinterpret_cast<std::intptr_t>(&time);
}

} // namespace

Vst2Host::Vst2Host(const std::wstring& modulePath)
{
    State().folder = State().Keep(zetcore::string::UTF16to8(
        zetcore::filesupport::FromNativePath(zetcore::filesupport::ToNativePath(modulePath).parent_path())));
    State().currentId = 0;
}

Vst2Host::~Vst2Host()
{
    State().currentId = 0;
}

void Vst2Host::SetCurrentId(std::int32_t id) noexcept
{
    State().currentId = id;
}

std::intptr_t Vst2Host::Answer(Effect*, std::int32_t opcode, std::int32_t, std::intptr_t, void* pointer,
                               float) noexcept
{
    switch (opcode) {
    case HostVersion:
        return interfaceVersion;
    case HostCurrentId:
        return State().currentId;
    case HostGetTime:
        return CurrentTime();
    case HostTempoAt:
        return 120 * 10000;
    case HostWantMidi:
    case HostIOChanged:
    case HostUpdateDisplay:
    case HostBeginEdit:
    case HostEndEdit:
        return 1;
    case HostGetSampleRate:
        return sampleRate;
    case HostGetBlockSize:
        return blockSize;
    case HostGetCurrentProcessLevel:
        return ProcessLevelUser;
    case HostGetAutomationState:
        return 1; // no automation
    case HostGetVendorString:
        return WriteText(pointer, maxVendorString, ClientName());
    case HostGetProductString:
        return WriteText(pointer, maxProductString, ClientName());
    case HostGetVendorVersion:
        return hostVersion;
    case HostCanDo:
        return CanDo(pointer);
    case HostGetLanguage:
        return LanguageEnglish;
    case HostGetDirectory:
        return reinterpret_cast<std::intptr_t>(State().folder.load());
    default:
        return 0;
    }
}

} // namespace zetaudiopluginhost::vst2
