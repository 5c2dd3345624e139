#include "header/ModuleFileHeader.h"

#include <algorithm>
#include <optional>

#include <zetaudiopluginhost/ReasonSentences.h>

namespace zetaudiopluginhost {

using zetcore::utility::Reason;

namespace {

// Layouts and numbers of the System V ABI's 64-bit object files; <elf.h> is not there on every platform.
struct FileHeader
{
    unsigned char ident[16];
    std::uint16_t type, machine;
    std::uint32_t version;
    std::uint64_t entry, programHeaders, sectionHeaders;
    std::uint32_t flags;
    std::uint16_t headerSize, programHeaderSize, programHeaderCount;
    std::uint16_t sectionHeaderSize, sectionHeaderCount, sectionNames;
};
static_assert(sizeof(FileHeader) == 64);

struct ProgramHeader
{
    std::uint32_t type, flags;
    std::uint64_t offset, virtualAddress, physicalAddress, fileSize, memorySize, alignment;
};
static_assert(sizeof(ProgramHeader) == 56);

struct DynamicEntry
{
    std::int64_t tag;
    std::uint64_t value;
};

struct Symbol
{
    std::uint32_t name;
    unsigned char info, other;
    std::uint16_t section;
    std::uint64_t value, size;
};
static_assert(sizeof(Symbol) == 24);

constexpr std::uint16_t typeShared = 3;
constexpr std::uint32_t programLoad = 1, programDynamic = 2;
constexpr std::int64_t dynamicHash = 4, dynamicStrings = 5, dynamicSymbols = 6, dynamicStringSize = 10;
constexpr std::int64_t dynamicGnuHash = 0x6FFFFEF5, dynamicFlags1 = 0x6FFFFFFB;
constexpr std::uint64_t flag1Program = 0x08000000;
// A linker makes about ten program headers and fifty dynamic entries; the largest libraries export some ten
// thousand symbols. What claims many times as much is broken, and must not keep us reading.
constexpr std::uint16_t maxProgramHeaders = 1024;
constexpr std::uint64_t maxDynamicEntries = 4096;
constexpr std::uint64_t maxSymbols = 1 << 20;

std::string ElfMachineName(std::uint16_t machine)
{
    switch (machine) {
    case 3:
        return "i386";
    case 8:
        return "mips";
    case 20:
    case 21:
        return "powerpc";
    case 22:
        return "s390";
    case 40:
        return "arm";
    case 62:
        return "x86_64";
    case 183:
        return "aarch64";
    case 243:
        return "riscv";
    default:
        return "number " + std::to_string(machine);
    }
}

std::uint16_t ElfMachineNumber(ModuleMachine machine)
{
    return machine == ModuleMachine::X86_64 ? 62 : 183;
}

/// The parts of a library that the search for an exported name needs.
class DynamicTables
{
  public:
    DynamicTables(ByteReader& reader, const std::vector<ProgramHeader>& headers)
        : file(reader), programHeaders(headers)
    {}

    /// False when the tables are damaged.
    bool Load()
    {
        for (const ProgramHeader& header : programHeaders) {
            if (header.type == programDynamic)
                return LoadEntries(header);
        }
        return true;
    }

    bool IsProgram() const { return (flags1 & flag1Program) != 0; }

    bool Exports(const EntryPoint& entry)
    {
        if (strings == 0 || symbols == 0)
            return false;
        if (gnuHash != 0)
            return ExportsByGnuHash(entry);
        if (hash != 0)
            return ExportsByHash(entry);
        return ExportsByOrder(entry);
    }

  private:
    bool LoadEntries(const ProgramHeader& header)
    {
        const std::uint64_t count = std::min(header.fileSize / sizeof(DynamicEntry), maxDynamicEntries);
        for (std::uint64_t i = 0; i < count; ++i) {
            DynamicEntry entry{};
            if (!file.ReadValue(header.offset + i * sizeof(DynamicEntry), entry))
                return false;
            switch (entry.tag) {
            case 0:
                return true;
            case dynamicHash:
                hash = entry.value;
                break;
            case dynamicStrings:
                strings = entry.value;
                break;
            case dynamicSymbols:
                symbols = entry.value;
                break;
            case dynamicStringSize:
                stringSize = entry.value;
                break;
            case dynamicGnuHash:
                gnuHash = entry.value;
                break;
            case dynamicFlags1:
                flags1 = entry.value;
                break;
            default:
                break;
            }
        }
        return true;
    }

    std::optional<std::uint64_t> OffsetOf(std::uint64_t address) const
    {
        for (const ProgramHeader& header : programHeaders) {
            if (header.type == programLoad && address >= header.virtualAddress &&
                address - header.virtualAddress < header.fileSize)
                return header.offset + (address - header.virtualAddress);
        }
        return std::nullopt;
    }

    template<class T>
    bool ReadAt(std::uint64_t address, T& value)
    {
        const std::optional<std::uint64_t> offset = OffsetOf(address);
        return offset && file.ReadValue(*offset, value);
    }

    bool IsExport(const Symbol& symbol, const EntryPoint& entry)
    {
        const unsigned binding = symbol.info >> 4;
        const unsigned type = symbol.info & 0xF;
        const bool isFunction = type == 2 || type == 10;
        const bool isWanted = type == 0 || (entry.isData ? type == 1 : isFunction);
        const bool isVisible = binding == 1 || binding == 2 || binding == 10;
        if (symbol.section == 0 || !isWanted || !isVisible)
            return false;
        if (symbol.name >= stringSize || entry.name.size() >= stringSize - symbol.name)
            return false;
        const std::optional<std::uint64_t> text = OffsetOf(strings + symbol.name);
        return text && file.HasText(*text, entry.name);
    }

    /// Looks a name up as the system's loader does. The table holds a header, a Bloom filter (passed over
    /// here), the buckets and the chains. The name's hash modulo the number of buckets chooses a bucket. The
    /// bucket holds the index of a symbol, the first one of its chain. The chains have one hash for each
    /// exported symbol: entry i belongs to symbol `firstSymbol` + i, and symbols below `firstSymbol` are not
    /// exported. The lowest bit of such a hash is not the hash's: it is set at the last symbol of a chain. So
    /// hashes are compared without that bit, and equal ones leave the decision to the names. The chain of a
    /// damaged file may have no end, therefore the steps are counted.
    bool ExportsByGnuHash(const EntryPoint& entry)
    {
        struct
        {
            std::uint32_t buckets, firstSymbol, bloomWords, bloomShift;
        } header{};
        if (!ReadAt(gnuHash, header) || header.buckets == 0)
            return false;
        std::uint32_t wanted = 5381;
        for (const char c : entry.name)
            wanted = wanted * 33 + static_cast<unsigned char>(c);

        const std::uint64_t buckets = gnuHash + sizeof(header) + std::uint64_t{header.bloomWords} * 8;
        const std::uint64_t chains = buckets + std::uint64_t{header.buckets} * 4;
        std::uint32_t index = 0;
        if (!ReadAt(buckets + std::uint64_t{wanted % header.buckets} * 4, index) ||
            index < header.firstSymbol)
            return false;
        for (std::uint64_t steps = 0; steps < maxSymbols; ++steps, ++index) {
            std::uint32_t found = 0;
            if (!ReadAt(chains + std::uint64_t{index - header.firstSymbol} * 4, found))
                return false;
            Symbol symbol{};
            if ((found | 1) == (wanted | 1) && index != 0 &&
                ReadAt(symbols + std::uint64_t{index} * sizeof(Symbol), symbol) && IsExport(symbol, entry))
                return true;
            if ((found & 1) != 0)
                return false;
        }
        return false;
    }

    /// Takes only the number of symbols from the older kind of hash table, and looks at each symbol.
    bool ExportsByHash(const EntryPoint& entry)
    {
        struct
        {
            std::uint32_t buckets, symbolCount;
        } header{};
        if (!ReadAt(hash, header))
            return false;
        return ExportsByOrder(entry, header.symbolCount);
    }

    bool ExportsByOrder(const EntryPoint& entry)
    {
        // Linkers put the names right behind the symbols.
        return strings > symbols && ExportsByOrder(entry, (strings - symbols) / sizeof(Symbol));
    }

    bool ExportsByOrder(const EntryPoint& entry, std::uint64_t count)
    {
        for (std::uint64_t i = 1; i < std::min(count, maxSymbols); ++i) {
            // A file that claims more symbols than it holds ends the search.
            Symbol symbol{};
            if (!ReadAt(symbols + i * sizeof(Symbol), symbol))
                return false;
            if (IsExport(symbol, entry))
                return true;
        }
        return false;
    }

    ByteReader& file;
    const std::vector<ProgramHeader>& programHeaders;
    std::uint64_t hash = 0, gnuHash = 0, strings = 0, stringSize = 0, symbols = 0, flags1 = 0;
};

} // namespace

std::optional<Reason> WhyElfNotLoadable(ByteReader& file, ModuleMachine machine,
                                        const std::vector<EntryPoint>& entryPoints)
{
    unsigned char ident[16] = {};
    if (!file.ReadValue(0, ident))
        return Reason{reasons::InEnglish(reasons::truncated)};
    if (ident[4] == 1)
        return Reason{reasons::InEnglish(reasons::is32Bit)};
    if (ident[4] != 2)
        return Reason{reasons::InEnglish(reasons::damaged)};
    if (ident[5] == 2)
        return Reason{reasons::InEnglish(reasons::otherMachine, {"big-endian"})};

    FileHeader header{};
    if (!file.ReadValue(0, header))
        return Reason{reasons::InEnglish(reasons::truncated)};
    if (header.machine != ElfMachineNumber(machine))
        return Reason{reasons::InEnglish(reasons::otherMachine, {ElfMachineName(header.machine)})};
    if (header.type != typeShared)
        return Reason{reasons::InEnglish(reasons::programFile)};
    if (header.programHeaderSize != sizeof(ProgramHeader) || header.programHeaderCount == 0 ||
        header.programHeaderCount > maxProgramHeaders)
        return Reason{reasons::InEnglish(reasons::damaged)};

    std::vector<ProgramHeader> programHeaders(header.programHeaderCount);
    if (!file.Read(header.programHeaders, programHeaders.data(),
                   programHeaders.size() * sizeof(ProgramHeader)))
        return Reason{reasons::InEnglish(reasons::truncated)};
    for (const ProgramHeader& part : programHeaders) {
        // The system maps what lies behind the end, and the process dies when it is touched.
        if ((part.type == programLoad || part.type == programDynamic) &&
            !file.Contains(part.offset, part.fileSize))
            return Reason{reasons::InEnglish(reasons::truncated)};
    }

    DynamicTables tables(file, programHeaders);
    if (!tables.Load())
        return Reason{reasons::InEnglish(reasons::damaged)};
    if (tables.IsProgram())
        return Reason{reasons::InEnglish(reasons::programFile)};
    for (const EntryPoint& entry : entryPoints) {
        if (tables.Exports(entry))
            return std::nullopt;
    }
    return Reason{reasons::InEnglish(reasons::noEntryPoint)};
}

} // namespace zetaudiopluginhost
