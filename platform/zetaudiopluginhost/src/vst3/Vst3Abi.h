#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef _WIN32
#define ZET_VST3_CALL __stdcall
#define ZET_VST3_COM_BYTE_ORDER 1
#else
#define ZET_VST3_CALL
#define ZET_VST3_COM_BYTE_ORDER 0
#endif

/// The part of the VST 3 binary interface that finding out about a plug-in needs. Layouts, identifiers and
/// names are those of the published VST 3 plug-in format, which is COM's: an interface is a table of
/// functions that begins with QueryInterface, AddRef and Release. The order of the functions is the contract.
namespace zetaudiopluginhost::vst3 {

/// An interface or class id as it travels through the interface. A factory's answers hold it unterminated.
using Tuid = char[16];
using Result = std::int32_t;
using TBool = std::uint8_t;

#if ZET_VST3_COM_BYTE_ORDER
inline constexpr Result noInterface = static_cast<Result>(0x80004002u);
inline constexpr Result resultOk = 0;
inline constexpr Result resultFalse = 1;
inline constexpr Result invalidArgument = static_cast<Result>(0x80070057u);
inline constexpr Result notImplemented = static_cast<Result>(0x80004001u);
inline constexpr Result internalError = static_cast<Result>(0x80004005u);
inline constexpr Result notInitialized = static_cast<Result>(0x8000FFFFu);
inline constexpr Result outOfMemory = static_cast<Result>(0x8007000Eu);
#else
inline constexpr Result noInterface = -1;
inline constexpr Result resultOk = 0;
inline constexpr Result resultFalse = 1;
inline constexpr Result invalidArgument = 2;
inline constexpr Result notImplemented = 3;
inline constexpr Result internalError = 4;
inline constexpr Result notInitialized = 5;
inline constexpr Result outOfMemory = 6;
#endif

/// A 16-byte id, made from its four words as documents print them.
struct Uid
{
    std::array<char, 16> bytes{};

    constexpr Uid() = default;
    /// Lays the words out in this platform's order: plain most-significant-first everywhere but on Windows,
    /// where the first word and the two halves of the second are least-significant-first, as in a GUID.
    constexpr Uid(std::uint32_t word1, std::uint32_t word2, std::uint32_t word3, std::uint32_t word4)
    {
        const std::uint32_t words[4] = {word1, word2, word3, word4};
        for (std::size_t i = 0; i < 16; ++i)
            bytes[i] = static_cast<char>(static_cast<unsigned char>(words[i / 4] >> (24 - 8 * (i % 4))));
        if constexpr (ZET_VST3_COM_BYTE_ORDER != 0)
            SwapGuidFields();
    }

    /// Reads an id that a factory gave.
    static Uid FromTuid(const char* tuid) noexcept
    {
        Uid uid;
        std::memcpy(uid.bytes.data(), tuid, uid.bytes.size());
        return uid;
    }

    const char* Data() const noexcept { return bytes.data(); }
    void CopyTo(char* tuid) const noexcept { std::memcpy(tuid, bytes.data(), bytes.size()); }
    /// True when `tuid`, 16 bytes, is this id.
    bool Is(const char* tuid) const noexcept { return std::memcmp(tuid, bytes.data(), bytes.size()) == 0; }
    /// The bytes most significant first: what documents and `moduleinfo.json` print, on every platform.
    constexpr std::array<char, 16> PrintedOrder() const noexcept
    {
        Uid printed = *this;
        if constexpr (ZET_VST3_COM_BYTE_ORDER != 0)
            printed.SwapGuidFields();
        return printed.bytes;
    }
    friend constexpr bool operator==(const Uid&, const Uid&) = default;

  private:
    constexpr void SwapGuidFields() noexcept
    {
        Swap(0, 3);
        Swap(1, 2);
        Swap(4, 5);
        Swap(6, 7);
    }
    constexpr void Swap(std::size_t a, std::size_t b) noexcept
    {
        const char kept = bytes[a];
        bytes[a] = bytes[b];
        bytes[b] = kept;
    }
};

/// Interfaces have no virtual destructor (their function tables have no place for one): whoever holds one
/// lets go of it with Release, never with delete.
class FUnknown
{
  public:
    static constexpr Uid iid{0x00000000, 0x00000000, 0xC0000000, 0x00000046};

    /// `wanted`: 16 bytes. On resultOk `*object` holds a reference, which the caller releases.
    virtual Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) = 0;
    virtual std::uint32_t ZET_VST3_CALL AddRef() = 0;
    virtual std::uint32_t ZET_VST3_CALL Release() = 0;

  protected:
    ~FUnknown() = default;
};

struct PFactoryInfo
{
    char vendor[64];
    char url[256];
    char email[128];
    std::int32_t flags;
};
static_assert(offsetof(PFactoryInfo, url) == 64);
static_assert(offsetof(PFactoryInfo, email) == 320);
static_assert(offsetof(PFactoryInfo, flags) == 448);
static_assert(sizeof(PFactoryInfo) == 452);

enum FactoryFlag : std::int32_t
{
    FactoryClassesDiscardable = 1 << 0,
    FactoryLicenseCheck = 1 << 1,
    FactoryComponentNonDiscardable = 1 << 3,
    FactoryUnicode = 1 << 4,
};

inline constexpr std::int32_t manyInstances = 0x7FFFFFFF;

struct PClassInfo
{
    Tuid cid;
    std::int32_t cardinality;
    char category[32]; ///< `audioModuleClass` for the classes that are plug-ins
    char name[64];
};
static_assert(offsetof(PClassInfo, category) == 20);
static_assert(offsetof(PClassInfo, name) == 52);
static_assert(sizeof(PClassInfo) == 116);

struct PClassInfo2
{
    Tuid cid;
    std::int32_t cardinality;
    char category[32];
    char name[64];
    std::uint32_t classFlags;
    char subCategories[128]; ///< joined by '|', for example "Fx|Delay" or "Instrument|Synth"
    char vendor[64];         ///< empty: the factory's
    char version[64];
    char sdkVersion[64];
};
static_assert(offsetof(PClassInfo2, classFlags) == 116);
static_assert(offsetof(PClassInfo2, subCategories) == 120);
static_assert(offsetof(PClassInfo2, vendor) == 248);
static_assert(sizeof(PClassInfo2) == 440);

struct PClassInfoW
{
    Tuid cid;
    std::int32_t cardinality;
    char category[32];
    char16_t name[64];
    std::uint32_t classFlags;
    char subCategories[128];
    char16_t vendor[64];
    char16_t version[64];
    char16_t sdkVersion[64];
};
static_assert(offsetof(PClassInfoW, name) == 52);
static_assert(offsetof(PClassInfoW, classFlags) == 180);
static_assert(offsetof(PClassInfoW, vendor) == 312);
static_assert(sizeof(PClassInfoW) == 696);

class IPluginFactory : public FUnknown
{
  public:
    static constexpr Uid iid{0x7A4D811C, 0x52114A1F, 0xAED9D2EE, 0x0B43BF9F};

    virtual Result ZET_VST3_CALL GetFactoryInfo(PFactoryInfo* info) = 0;
    virtual std::int32_t ZET_VST3_CALL CountClasses() = 0;
    virtual Result ZET_VST3_CALL GetClassInfo(std::int32_t index, PClassInfo* info) = 0;
    /// `cid` and `wanted`: 16 bytes each. On resultOk `*object` holds a reference.
    virtual Result ZET_VST3_CALL CreateInstance(const char* cid, const char* wanted, void** object) = 0;

  protected:
    ~IPluginFactory() = default;
};

class IPluginFactory2 : public IPluginFactory
{
  public:
    static constexpr Uid iid{0x0007B650, 0xF24B4C0B, 0xA464EDB9, 0xF00B2ABB};

    virtual Result ZET_VST3_CALL GetClassInfo2(std::int32_t index, PClassInfo2* info) = 0;

  protected:
    ~IPluginFactory2() = default;
};

class IPluginFactory3 : public IPluginFactory2
{
  public:
    static constexpr Uid iid{0x4555A2AB, 0xC1234E57, 0x9B122910, 0x36878931};

    virtual Result ZET_VST3_CALL GetClassInfoUnicode(std::int32_t index, PClassInfoW* info) = 0;
    virtual Result ZET_VST3_CALL SetHostContext(FUnknown* context) = 0;

  protected:
    ~IPluginFactory3() = default;
};

class IPluginBase : public FUnknown
{
  public:
    static constexpr Uid iid{0x22888DDB, 0x156E45AE, 0x8358B348, 0x08190625};

    /// `context`: the host's IHostApplication. Terminate is called exactly when this gave resultOk.
    virtual Result ZET_VST3_CALL Initialize(FUnknown* context) = 0;
    virtual Result ZET_VST3_CALL Terminate() = 0;

  protected:
    ~IPluginBase() = default;
};

/// Shapes that a scanner only passes by: their place in the function table matters, their content does not.
struct BusInfo;
struct RoutingInfo;
class IBStream;

class IComponent : public IPluginBase
{
  public:
    static constexpr Uid iid{0xE831FF31, 0xF2D54301, 0x928EBBEE, 0x25697802};

    virtual Result ZET_VST3_CALL GetControllerClassId(char* cid) = 0;
    virtual Result ZET_VST3_CALL SetIoMode(std::int32_t mode) = 0;
    virtual std::int32_t ZET_VST3_CALL GetBusCount(std::int32_t type, std::int32_t direction) = 0;
    virtual Result ZET_VST3_CALL GetBusInfo(std::int32_t type, std::int32_t direction, std::int32_t index,
                                            BusInfo& info) = 0;
    virtual Result ZET_VST3_CALL GetRoutingInfo(RoutingInfo& input, RoutingInfo& output) = 0;
    virtual Result ZET_VST3_CALL ActivateBus(std::int32_t type, std::int32_t direction, std::int32_t index,
                                             TBool state) = 0;
    virtual Result ZET_VST3_CALL SetActive(TBool state) = 0;
    virtual Result ZET_VST3_CALL SetState(IBStream* state) = 0;
    virtual Result ZET_VST3_CALL GetState(IBStream* state) = 0;

  protected:
    ~IComponent() = default;
};

/// The host's side, handed to Initialize and SetHostContext.
class IHostApplication : public FUnknown
{
  public:
    static constexpr Uid iid{0x58E595CC, 0xDB2D4969, 0x8B6AAF8C, 0x36A664E5};

    /// `name`: room for 128 units, terminator included.
    virtual Result ZET_VST3_CALL GetName(char16_t* name) = 0;
    /// Messages and attribute lists for components that talk to their controllers.
    virtual Result ZET_VST3_CALL CreateInstance(const char* cid, const char* wanted, void** object) = 0;

  protected:
    ~IHostApplication() = default;
};

/// A class whose `category` is the first is a plug-in. The second marks its controller, which is no plug-in.
inline constexpr const char* audioModuleClass = "Audio Module Class";
inline constexpr const char* componentControllerClass = "Component Controller Class";

/// Entry points. GetPluginFactory gives a reference that the caller releases.
inline constexpr const char* factoryEntryName = "GetPluginFactory";
using GetPluginFactoryFunction = IPluginFactory*(ZET_VST3_CALL*)();

/// Linux: both must be there; the first is given the library's handle from dlopen and false means "do not
/// use".
inline constexpr const char* moduleEntryName = "ModuleEntry";
inline constexpr const char* moduleExitName = "ModuleExit";
using ModuleEntryFunction = bool (*)(void* libraryHandle);
using ModuleExitFunction = bool (*)();

/// Windows: both optional.
inline constexpr const char* initDllName = "InitDll";
inline constexpr const char* exitDllName = "ExitDll";
using InitDllFunction = bool (*)();
using ExitDllFunction = bool (*)();

} // namespace zetaudiopluginhost::vst3
