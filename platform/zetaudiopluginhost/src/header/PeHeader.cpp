#include "header/ModuleFileHeader.h"

#include <algorithm>
#include <array>
#include <optional>

#include <zetaudiopluginhost/ReasonSentences.h>

namespace zetaudiopluginhost {

using zetcore::utility::Reason;

namespace {

// Layouts and numbers of the PE format's published description.
struct CoffHeader
{
    std::uint32_t signature;
    std::uint16_t machine, sectionCount;
    std::uint32_t time, symbols, symbolCount;
    std::uint16_t optionalHeaderSize, characteristics;
};
static_assert(sizeof(CoffHeader) == 24);

struct SectionHeader
{
    char name[8];
    std::uint32_t virtualSize, virtualAddress, rawSize, rawOffset;
    std::uint32_t relocations, lineNumbers;
    std::uint16_t relocationCount, lineNumberCount;
    std::uint32_t characteristics;
};
static_assert(sizeof(SectionHeader) == 40);

struct ExportDirectory
{
    std::uint32_t flags, time, version, name, ordinalBase;
    std::uint32_t functionCount, nameCount, functions, names, ordinals;
};
static_assert(sizeof(ExportDirectory) == 40);

struct ImportDescriptor
{
    std::uint32_t lookups, time, forwarders, name, addresses;
};
static_assert(sizeof(ImportDescriptor) == 20);

constexpr std::uint64_t peOffsetPlace = 0x3C;
constexpr std::uint32_t peSignature = 0x00004550;
constexpr std::uint16_t isDll = 0x2000;
constexpr std::uint16_t magicPe32 = 0x10B, magicPe32Plus = 0x20B;
constexpr std::uint64_t directoryCountPlace = 108, exportDirectoryPlace = 112, importDirectoryPlace = 120;
// The system's own loader takes no more than 96 sections; the number of an exported function has 16 bits, and
// a few names may share one.
constexpr std::uint16_t maxSections = 96;
constexpr std::uint32_t maxNames = 1 << 17;
// No library needs so many others, and no file's name is so long.
constexpr std::uint32_t maxImports = 1024;
constexpr std::size_t maxNameLength = 260;

std::string PeMachineName(std::uint16_t machine)
{
    switch (machine) {
    case 0x8664:
        return "x86_64";
    case 0xAA64:
        return "aarch64";
    case 0x1C0:
    case 0x1C4:
        return "arm";
    case 0x200:
        return "ia64";
    default:
        return "number " + std::to_string(machine);
    }
}

std::uint16_t PeMachineNumber(ModuleMachine machine)
{
    return machine == ModuleMachine::X86_64 ? 0x8664 : 0xAA64;
}

std::optional<std::uint64_t> OffsetOf(const std::vector<SectionHeader>& sections, std::uint32_t address)
{
    for (const SectionHeader& section : sections) {
        if (address >= section.virtualAddress && address - section.virtualAddress < section.rawSize)
            return std::uint64_t{section.rawOffset} + (address - section.virtualAddress);
    }
    return std::nullopt;
}

/// Empty when no text of a file name's length ends there.
std::string ReadName(ByteReader& file, std::uint64_t place)
{
    std::string name;
    for (char letter = 0; name.size() < maxNameLength && file.ReadValue(place + name.size(), letter);) {
        if (letter == '\0')
            return name;
        name.push_back(letter);
    }
    return {};
}

bool ExportsOneOf(ByteReader& file, const std::vector<SectionHeader>& sections,
                  std::uint32_t directoryAddress, const std::vector<EntryPoint>& wanted)
{
    const std::optional<std::uint64_t> place = OffsetOf(sections, directoryAddress);
    ExportDirectory directory{};
    if (!place || !file.ReadValue(*place, directory))
        return false;
    const std::optional<std::uint64_t> names = OffsetOf(sections, directory.names);
    if (!names)
        return false;
    for (std::uint32_t i = 0; i < std::min(directory.nameCount, maxNames); ++i) {
        std::uint32_t nameAddress = 0;
        if (!file.ReadValue(*names + std::uint64_t{i} * 4, nameAddress))
            return false;
        const std::optional<std::uint64_t> text = OffsetOf(sections, nameAddress);
        for (const EntryPoint& entry : wanted) {
            if (text && file.HasText(*text, entry.name))
                return true;
        }
    }
    return false;
}

} // namespace

std::optional<Reason> WhyPeNotLoadable(ByteReader& file, ModuleMachine machine,
                                       const std::vector<EntryPoint>& entryPoints)
{
    std::uint32_t peOffset = 0;
    CoffHeader header{};
    if (!file.ReadValue(peOffsetPlace, peOffset) || !file.ReadValue(peOffset, header))
        return Reason{reasons::InEnglish(reasons::truncated)};
    if (header.signature != peSignature)
        return Reason{reasons::InEnglish(reasons::noLibrary)};
    if (header.machine == 0x14C)
        return Reason{reasons::InEnglish(reasons::is32Bit)};
    if (header.machine != PeMachineNumber(machine))
        return Reason{reasons::InEnglish(reasons::otherMachine, {PeMachineName(header.machine)})};
    if ((header.characteristics & isDll) == 0)
        return Reason{reasons::InEnglish(reasons::programFile)};

    const std::uint64_t optional = std::uint64_t{peOffset} + sizeof(CoffHeader);
    std::uint16_t magic = 0;
    if (!file.ReadValue(optional, magic))
        return Reason{reasons::InEnglish(reasons::truncated)};
    if (magic == magicPe32)
        return Reason{reasons::InEnglish(reasons::is32Bit)};
    if (magic != magicPe32Plus || header.sectionCount == 0 || header.sectionCount > maxSections)
        return Reason{reasons::InEnglish(reasons::damaged)};

    std::vector<SectionHeader> sections(header.sectionCount);
    if (!file.Read(optional + header.optionalHeaderSize, sections.data(),
                   sections.size() * sizeof(SectionHeader)))
        return Reason{reasons::InEnglish(reasons::truncated)};
    for (const SectionHeader& section : sections) {
        if (section.rawSize != 0 && section.rawOffset != 0 &&
            !file.Contains(section.rawOffset, section.rawSize))
            return Reason{reasons::InEnglish(reasons::truncated)};
    }

    std::uint32_t directoryCount = 0;
    std::array<std::uint32_t, 2> exportDirectory{};
    if (header.optionalHeaderSize < exportDirectoryPlace + sizeof(exportDirectory) ||
        !file.ReadValue(optional + directoryCountPlace, directoryCount) ||
        !file.ReadValue(optional + exportDirectoryPlace, exportDirectory))
        return Reason{reasons::InEnglish(reasons::damaged)};
    if (directoryCount == 0 || exportDirectory[0] == 0 ||
        !ExportsOneOf(file, sections, exportDirectory[0], entryPoints))
        return Reason{reasons::InEnglish(reasons::noEntryPoint)};
    return std::nullopt;
}

std::vector<std::string> PeImports(ByteReader& file)
{
    std::uint32_t peOffset = 0;
    CoffHeader header{};
    if (!file.ReadValue(peOffsetPlace, peOffset) || !file.ReadValue(peOffset, header) ||
        header.signature != peSignature || header.sectionCount > maxSections)
        return {};
    const std::uint64_t optional = std::uint64_t{peOffset} + sizeof(CoffHeader);
    std::uint16_t magic = 0;
    std::uint32_t directoryCount = 0, directoryAddress = 0;
    std::vector<SectionHeader> sections(header.sectionCount);
    if (!file.ReadValue(optional, magic) || magic != magicPe32Plus ||
        !file.ReadValue(optional + directoryCountPlace, directoryCount) || directoryCount < 2 ||
        !file.ReadValue(optional + importDirectoryPlace, directoryAddress) ||
        !file.Read(optional + header.optionalHeaderSize, sections.data(),
                   sections.size() * sizeof(SectionHeader)))
        return {};
    const std::optional<std::uint64_t> place = OffsetOf(sections, directoryAddress);
    std::vector<std::string> names;
    ImportDescriptor descriptor{};
    for (std::uint32_t i = 0; place && i < maxImports; ++i) {
        if (!file.ReadValue(*place + std::uint64_t{i} * sizeof descriptor, descriptor) ||
            descriptor.name == 0)
            break;
        const std::optional<std::uint64_t> text = OffsetOf(sections, descriptor.name);
        if (std::string name = text ? ReadName(file, *text) : std::string(); !name.empty())
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace zetaudiopluginhost
