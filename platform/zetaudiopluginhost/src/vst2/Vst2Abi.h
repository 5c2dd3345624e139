#pragma once

#include <cstddef>
#include <cstdint>

/// The part of the VST 2.4 binary interface that finding out about a plug-in needs. Numbers, layouts and
/// texts are those of the published VST 2.4 plug-in format; only 64-bit processes are supported. The calling
/// convention is the platform's own C one, which is the only one there is on x86-64.
namespace zetaudiopluginhost::vst2 {

struct Effect;

using Dispatcher = std::intptr_t (*)(Effect* effect, std::int32_t opcode, std::int32_t index,
                                     std::intptr_t value, void* pointer, float option);
/// The function of the host that the plug-in calls. `effect` is null while the entry function has not
/// returned.
using HostCallback = Dispatcher;
/// The entry function: gives an effect, or null. Its result lives until `EffectClose`.
using EntryFunction = Effect* (*)(HostCallback host);
using ProcessFunction = void (*)(Effect* effect, float** inputs, float** outputs, std::int32_t frames);
using ProcessDoubleFunction = void (*)(Effect* effect, double** inputs, double** outputs,
                                       std::int32_t frames);
using SetParameterFunction = void (*)(Effect* effect, std::int32_t index, float value);
using GetParameterFunction = float (*)(Effect* effect, std::int32_t index);

/// Entry names, in the order in which they are to be looked for.
inline constexpr const char* entryName = "VSTPluginMain";
inline constexpr const char* oldEntryName = "main";

/// "VstP", most significant byte first.
inline constexpr std::int32_t effectMagic = 0x56737450;
/// Both sides answer this when they are asked for the version of the interface that they speak.
inline constexpr std::intptr_t interfaceVersion = 2400;

/// One plug-in instance, allocated and owned by the plug-in.
struct Effect
{
    std::int32_t magic;
    Dispatcher dispatcher;
    ProcessFunction process; ///< adds to the outputs; replaced by `processReplacing` long ago
    SetParameterFunction setParameter;
    GetParameterFunction getParameter;
    std::int32_t numPrograms;
    std::int32_t numParams;
    std::int32_t numInputs;
    std::int32_t numOutputs;
    std::int32_t flags;            ///< `EffectFlag`s
    std::intptr_t hostReserved[2]; ///< the host's
    std::int32_t initialDelay;     ///< in frames
    std::int32_t realQualities;    ///< unused since 2.4, as are the next two
    std::int32_t offQualities;
    float ioRatio;
    void* object; ///< the plug-in's
    void* user;   ///< the host's
    std::int32_t uniqueID;
    std::int32_t version;
    ProcessFunction processReplacing;
    ProcessDoubleFunction processDoubleReplacing;
    char future[56];
};

static_assert(sizeof(void*) == 8, "the layout below is that of 64-bit processes");
static_assert(offsetof(Effect, magic) == 0);
static_assert(offsetof(Effect, dispatcher) == 8);
static_assert(offsetof(Effect, process) == 16);
static_assert(offsetof(Effect, setParameter) == 24);
static_assert(offsetof(Effect, getParameter) == 32);
static_assert(offsetof(Effect, numPrograms) == 40);
static_assert(offsetof(Effect, numOutputs) == 52);
static_assert(offsetof(Effect, flags) == 56);
static_assert(offsetof(Effect, hostReserved) == 64);
static_assert(offsetof(Effect, initialDelay) == 80);
static_assert(offsetof(Effect, object) == 96);
static_assert(offsetof(Effect, user) == 104);
static_assert(offsetof(Effect, uniqueID) == 112);
static_assert(offsetof(Effect, version) == 116);
static_assert(offsetof(Effect, processReplacing) == 120);
static_assert(offsetof(Effect, processDoubleReplacing) == 128);
static_assert(sizeof(Effect) == 192);

enum EffectFlag : std::int32_t
{
    EffectHasEditor = 1 << 0,
    EffectCanReplacing = 1 << 4,
    EffectProgramChunks = 1 << 5,
    EffectIsSynth = 1 << 8,
    EffectNoSoundInStop = 1 << 9,
    EffectCanDoubleReplacing = 1 << 12,
};

/// The host's questions to a plug-in through `Effect::dispatcher`.
enum EffectOpcode : std::int32_t
{
    EffectOpen = 0,
    EffectClose = 1, ///< the effect is gone afterwards
    EffectSetSampleRate = 10,
    EffectSetBlockSize = 11,
    EffectMainsChanged = 12,
    EffectIdentify = 22,
    EffectGetPlugCategory = 35,  ///< gives a `PlugCategory`
    EffectGetEffectName = 45,    ///< pointer: char[maxEffectName]; gives 1 when it wrote one
    EffectGetVendorString = 47,  ///< pointer: char[maxVendorString]; likewise
    EffectGetProductString = 48, ///< pointer: char[maxProductString]; likewise
    EffectGetVendorVersion = 49, ///< gives the plug-in's version, in its vendor's own scheme
    EffectVendorSpecific = 50,
    EffectCanDo = 51, ///< pointer: what, as text; gives 1 yes, -1 no, 0 unknown
    EffectGetVstVersion = 58,
    /// pointer: char[maxEffectName], gets the next sub-plug-in's name; gives its unique id, 0 after the last.
    EffectShellGetNextPlugin = 70,
};

/// A plug-in's questions to the host through `HostCallback`.
enum HostOpcode : std::int32_t
{
    HostAutomate = 0,
    HostVersion = 1,
    /// The sub-plug-in of a shell that is to be made: asked in the entry function, 0 for the shell itself.
    HostCurrentId = 2,
    HostIdle = 3,
    HostPinConnected = 4, ///< gives 0 for "connected"
    HostWantMidi = 6,
    HostGetTime = 7, ///< gives a pointer to a time record, or 0
    HostProcessEvents = 8,
    HostSetTime = 9,
    HostTempoAt = 10,
    HostGetNumAutomatableParameters = 11,
    HostGetParameterQuantization = 12,
    HostIOChanged = 13,
    HostNeedIdle = 14,
    HostSizeWindow = 15,
    HostGetSampleRate = 16,
    HostGetBlockSize = 17,
    HostGetInputLatency = 18,
    HostGetOutputLatency = 19,
    HostGetPreviousPlug = 20,
    HostGetNextPlug = 21,
    HostWillReplaceOrAccumulate = 22,
    HostGetCurrentProcessLevel = 23,
    HostGetAutomationState = 24,
    HostOfflineStart = 25,
    HostOfflineRead = 26,
    HostOfflineWrite = 27,
    HostOfflineGetCurrentPass = 28,
    HostOfflineGetCurrentMetaPass = 29,
    HostSetOutputSampleRate = 30,
    HostGetOutputSpeakerArrangement = 31,
    HostGetVendorString = 32,  ///< pointer: char[maxVendorString]
    HostGetProductString = 33, ///< pointer: char[maxProductString]
    HostGetVendorVersion = 34,
    HostVendorSpecific = 35,
    HostSetIcon = 36,
    HostCanDo = 37, ///< pointer: what, as text
    HostGetLanguage = 38,
    HostOpenWindow = 39,
    HostCloseWindow = 40,
    HostGetDirectory = 41, ///< gives a char* to the folder of the plug-in
    HostUpdateDisplay = 42,
    HostBeginEdit = 43,
    HostEndEdit = 44,
    HostOpenFileSelector = 45,
    HostCloseFileSelector = 46,
    HostEditFile = 47,
    HostGetChunkFile = 48,
    HostGetInputSpeakerArrangement = 49,
};

enum PlugCategory : std::int32_t
{
    CategoryUnknown = 0,
    CategoryEffect = 1,
    CategorySynth = 2,
    CategoryAnalysis = 3,
    CategoryMastering = 4,
    CategorySpacializer = 5,
    CategoryRoomFx = 6,
    CategorySurroundFx = 7,
    CategoryRestoration = 8,
    CategoryOfflineProcess = 9,
    CategoryShell = 10, ///< a container: ask it with `EffectShellGetNextPlugin`
    CategoryGenerator = 11,
};

enum HostLanguage : std::int32_t
{
    LanguageEnglish = 1,
    LanguageGerman = 2,
    LanguageFrench = 3,
    LanguageItalian = 4,
    LanguageSpanish = 5,
    LanguageJapanese = 6,
};

/// Answers to `HostGetCurrentProcessLevel`.
enum ProcessLevel : std::int32_t
{
    ProcessLevelUnknown = 0,
    ProcessLevelUser = 1,
    ProcessLevelRealtime = 2,
    ProcessLevelPrefetch = 3,
    ProcessLevelOffline = 4,
};

/// Documented sizes of the text buffers, terminator included. Plug-ins are known to write past them and to
/// leave the terminator out: hand over far larger buffers (`generousStringBuffer`), filled with zeros.
inline constexpr std::size_t maxEffectName = 32;
inline constexpr std::size_t maxVendorString = 64;
inline constexpr std::size_t maxProductString = 64;
inline constexpr std::size_t generousStringBuffer = 1024;

/// The answer to `HostGetTime`.
struct TimeInfo
{
    double samplePosition;
    double sampleRate;
    double nanoSeconds;
    double quarterPosition;
    double tempo; ///< beats per minute
    double barStart;
    double cycleStart;
    double cycleEnd;
    std::int32_t timeSignatureNumerator;
    std::int32_t timeSignatureDenominator;
    std::int32_t smpteOffset;
    std::int32_t smpteFrameRate;
    std::int32_t samplesToNextClock;
    std::int32_t flags; ///< `TimeFlag`s: which of the fields above hold something
};
static_assert(offsetof(TimeInfo, timeSignatureNumerator) == 64);
static_assert(sizeof(TimeInfo) == 88);

enum TimeFlag : std::int32_t
{
    TimeTransportChanged = 1 << 0,
    TimeTransportPlaying = 1 << 1,
    TimeNanosValid = 1 << 8,
    TimeQuarterPositionValid = 1 << 9,
    TimeTempoValid = 1 << 10,
    TimeSignatureValid = 1 << 13,
};

} // namespace zetaudiopluginhost::vst2
