#include "header/ModuleFileHeader.h"

#include <cstring>
#include <random>

#include <gtest/gtest.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TextOf.h>

namespace zetaudiopluginhost {
namespace {

constexpr ModuleTarget elfTarget{ModuleFormat::Elf, ModuleMachine::X86_64};
constexpr ModuleTarget peTarget{ModuleFormat::Pe, ModuleMachine::X86_64};
const std::vector<EntryPoint> vst2Entries = {"VSTPluginMain", "main"};
const std::vector<EntryPoint> dataEntries = {{"VSTPluginMain", true}};

std::string Refusal(std::string_view bytes, const ModuleTarget& target = elfTarget,
                    const std::vector<EntryPoint>& entries = vst2Entries)
{
    MemoryByteReader reader(bytes);
    return zettesting::TextOf(WhyNotLoadable(reader, target, entries));
}

template<class T>
void Put(std::string& bytes, std::size_t offset, T value)
{
    if (bytes.size() < offset + sizeof(T))
        bytes.resize(offset + sizeof(T));
    std::memcpy(bytes.data() + offset, &value, sizeof(T));
}

void PutText(std::string& bytes, std::size_t offset, std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        Put(bytes, offset + i, text[i]);
    Put(bytes, offset + text.size(), '\0');
}

std::uint32_t GnuHash(std::string_view name)
{
    std::uint32_t hash = 5381;
    for (const char c : name)
        hash = hash * 33 + static_cast<unsigned char>(c);
    return hash;
}

enum class Lookup
{
    GnuHash,
    Hash,
    None,
};

// The offsets of the sample library's parts. Addresses are 0x1000 above the offsets.
constexpr std::size_t loadHeader = 64, dynamicHeader = 120, dynamicPart = 256, symbolPart = 512;
constexpr std::size_t namePart = 560, hashPart = 640, elfSize = 704;
constexpr std::uint64_t addressBase = 0x1000;

/// A whole 64-bit library with one exported function.
std::string SampleElf(std::string_view exported = "VSTPluginMain", Lookup lookup = Lookup::GnuHash)
{
    std::string elf(elfSize, '\0');
    PutText(elf, 0,
            "\x7F"
            "ELF\x02\x01\x01");
    Put<std::uint16_t>(elf, 16, 3);
    Put<std::uint16_t>(elf, 18, 62);
    Put<std::uint64_t>(elf, 32, loadHeader);
    Put<std::uint16_t>(elf, 54, 56);
    Put<std::uint16_t>(elf, 56, 2);

    Put<std::uint32_t>(elf, loadHeader, 1);
    Put<std::uint64_t>(elf, loadHeader + 16, addressBase);
    Put<std::uint64_t>(elf, loadHeader + 32, elfSize);
    Put<std::uint32_t>(elf, dynamicHeader, 2);
    Put<std::uint64_t>(elf, dynamicHeader + 8, dynamicPart);
    Put<std::uint64_t>(elf, dynamicHeader + 32, 6 * 16);

    std::size_t entry = dynamicPart;
    const auto addDynamic = [&](std::int64_t tag, std::uint64_t value) {
        Put(elf, entry, tag);
        Put(elf, entry + 8, value);
        entry += 16;
    };
    addDynamic(5, namePart + addressBase);
    addDynamic(6, symbolPart + addressBase);
    addDynamic(10, hashPart - namePart);
    if (lookup != Lookup::None)
        addDynamic(lookup == Lookup::GnuHash ? 0x6FFFFEF5 : 4, hashPart + addressBase);

    const std::size_t symbol = symbolPart + 24;
    Put<std::uint32_t>(elf, symbol, 1);
    Put<std::uint8_t>(elf, symbol + 4, 0x12);
    Put<std::uint16_t>(elf, symbol + 6, 7);
    PutText(elf, namePart + 1, exported);

    // One bucket, one symbol from number 1 on, one bloom word; or one bucket and two symbols.
    Put<std::uint32_t>(elf, hashPart, 1);
    Put<std::uint32_t>(elf, hashPart + 4, lookup == Lookup::GnuHash ? 1 : 2);
    Put<std::uint32_t>(elf, hashPart + 8, 1);
    Put<std::uint32_t>(elf, hashPart + 24, 1);
    Put<std::uint32_t>(elf, hashPart + 28, GnuHash(exported) | 1);
    return elf;
}

constexpr std::size_t peStart = 128, peOptional = peStart + 24, peSections = peOptional + 240;
constexpr std::size_t peRaw = 512, peSize = 1024;
constexpr std::uint32_t peAddress = 0x1000;

std::string SamplePe(std::string_view exported = "VSTPluginMain")
{
    std::string pe(peSize, '\0');
    PutText(pe, 0, "MZ");
    Put<std::uint32_t>(pe, 0x3C, peStart);
    PutText(pe, peStart, "PE");
    Put<std::uint16_t>(pe, peStart + 4, 0x8664);
    Put<std::uint16_t>(pe, peStart + 6, 1);
    Put<std::uint16_t>(pe, peStart + 20, 240);
    Put<std::uint16_t>(pe, peStart + 22, 0x2022);
    Put<std::uint16_t>(pe, peOptional, 0x20B);
    Put<std::uint32_t>(pe, peOptional + 108, 16);
    Put<std::uint32_t>(pe, peOptional + 112, peAddress);
    Put<std::uint32_t>(pe, peOptional + 116, 40);
    Put<std::uint32_t>(pe, peSections + 12, peAddress);
    Put<std::uint32_t>(pe, peSections + 16, peSize - peRaw);
    Put<std::uint32_t>(pe, peSections + 20, peRaw);
    Put<std::uint32_t>(pe, peRaw + 24, 1);
    Put<std::uint32_t>(pe, peRaw + 32, peAddress + 64);
    Put<std::uint32_t>(pe, peRaw + 64, peAddress + 128);
    PutText(pe, peRaw + 128, exported);
    return pe;
}

TEST(ModuleFileHeader, WholeLibrariesWithAnEntryPointAreLoadable)
{
    EXPECT_EQ(Refusal(SampleElf("VSTPluginMain", Lookup::GnuHash)), "");
    EXPECT_EQ(Refusal(SampleElf("main", Lookup::Hash)), "");
    EXPECT_EQ(Refusal(SampleElf("VSTPluginMain", Lookup::None)), "");
    EXPECT_EQ(Refusal(SamplePe(), peTarget), "");
    EXPECT_EQ(Refusal(SamplePe("main"), peTarget), "");
}

TEST(ModuleFileHeader, LibrariesWithoutAnEntryPointAreNoPlugins)
{
    for (const Lookup lookup : {Lookup::GnuHash, Lookup::Hash, Lookup::None}) {
        EXPECT_EQ(Refusal(SampleElf("VSTPluginMainly", lookup)), "no plug-in entry point");
        EXPECT_EQ(Refusal(SampleElf("VSTPlugin", lookup)), "no plug-in entry point");
    }
    EXPECT_EQ(Refusal(SamplePe("mainly"), peTarget), "no plug-in entry point");
    std::string imported = SampleElf();
    Put<std::uint16_t>(imported, symbolPart + 24 + 6, 0);
    EXPECT_EQ(Refusal(imported), "no plug-in entry point");
    std::string data = SampleElf();
    Put<std::uint8_t>(data, symbolPart + 24 + 4, 0x11);
    EXPECT_EQ(Refusal(data), "no plug-in entry point");
}

TEST(ModuleFileHeader, AnEntryPointThatIsDataIsNoFunctionAndTheOtherWayRound)
{
    for (const Lookup lookup : {Lookup::GnuHash, Lookup::Hash, Lookup::None}) {
        std::string elf = SampleElf("VSTPluginMain", lookup);
        EXPECT_EQ(Refusal(elf, elfTarget, dataEntries), "no plug-in entry point");
        Put<std::uint8_t>(elf, symbolPart + 24 + 4, 0x11);
        EXPECT_EQ(Refusal(elf, elfTarget, dataEntries), "");
        Put<std::uint8_t>(elf, symbolPart + 24 + 4, 0x10);
        EXPECT_EQ(Refusal(elf, elfTarget, dataEntries), "") << "a symbol without a type";
        Put<std::uint8_t>(elf, symbolPart + 24 + 4, 0x01);
        EXPECT_EQ(Refusal(elf, elfTarget, dataEntries), "no plug-in entry point") << "a local one";
    }
    EXPECT_EQ(Refusal(SamplePe(), peTarget, dataEntries), "") << "its exports have no type";
}

struct DamageCase
{
    const char* name;
    std::size_t offset;
    std::uint64_t value;
    std::size_t width;
    const char* verdict;
};

void ExpectVerdicts(const std::string& whole, const ModuleTarget& target,
                    const std::vector<DamageCase>& cases)
{
    for (const DamageCase& one : cases) {
        std::string bytes = whole;
        std::memcpy(bytes.data() + one.offset, &one.value, one.width);
        EXPECT_EQ(Refusal(bytes, target), one.verdict) << one.name;
    }
}

TEST(ModuleFileHeader, ElfFilesOfAnotherKindAreNamed)
{
    ExpectVerdicts(SampleElf(), elfTarget,
                   {{"32-bit", 4, 1, 1, "32-bit"},
                    {"no class", 4, 9, 1, "damaged"},
                    {"big-endian", 5, 2, 1, "for another machine (big-endian)"},
                    {"aarch64", 18, 183, 2, "for another machine (aarch64)"},
                    {"unknown machine", 18, 4711, 2, "for another machine (number 4711)"},
                    {"program", 16, 2, 2, "a program or an object file, not a library"},
                    {"object", 16, 1, 2, "a program or an object file, not a library"},
                    {"header size", 54, 40, 2, "damaged"},
                    {"no headers", 56, 0, 2, "damaged"},
                    {"too many headers", 56, 0xFFFF, 2, "damaged"},
                    {"headers outside", 32, 1 << 20, 8, "truncated"},
                    {"headers overflow", 32, ~std::uint64_t{0}, 8, "truncated"},
                    {"segment outside", loadHeader + 32, elfSize + 1, 8, "truncated"},
                    {"segment overflows", loadHeader + 8, ~std::uint64_t{0} - 8, 8, "truncated"},
                    {"dynamic part outside", dynamicHeader + 8, elfSize, 8, "truncated"},
                    {"names outside", dynamicPart + 8, 1 << 30, 8, "no plug-in entry point"},
                    {"symbols outside", dynamicPart + 24, ~std::uint64_t{0}, 8, "no plug-in entry point"},
                    {"hash outside", dynamicPart + 56, ~std::uint64_t{0} - 15, 8, "no plug-in entry point"},
                    {"no buckets", hashPart, 0, 4, "no plug-in entry point"},
                    {"many bloom words", hashPart + 8, 0xFFFFFFFF, 4, "no plug-in entry point"},
                    {"name outside", symbolPart + 24, 0xFFFFFFFF, 4, "no plug-in entry point"}});
    EXPECT_EQ(Refusal(SampleElf(), {ModuleFormat::Elf, ModuleMachine::AArch64}),
              "for another machine (x86_64)");
    EXPECT_EQ(Refusal(SampleElf(), peTarget), "for another system (ELF)");
}

TEST(ModuleFileHeader, APositionIndependentProgramIsNoLibrary)
{
    std::string program = SampleElf();
    Put<std::int64_t>(program, dynamicPart + 64, 0x6FFFFFFB);
    Put<std::uint64_t>(program, dynamicPart + 72, 0x08000000);
    EXPECT_EQ(Refusal(program), "a program or an object file, not a library");
}

std::vector<std::string> Imports(std::string_view bytes)
{
    MemoryByteReader reader(bytes);
    return PeImports(reader);
}

constexpr std::size_t peImportPart = 256, peImportNames = 384;

/// A library that needs two others.
std::string PeWithImports()
{
    std::string pe = SamplePe();
    Put<std::uint32_t>(pe, peOptional + 120, peAddress + peImportPart);
    Put<std::uint32_t>(pe, peRaw + peImportPart + 12, peAddress + peImportNames);
    Put<std::uint32_t>(pe, peRaw + peImportPart + 20 + 12, peAddress + peImportNames + 32);
    PutText(pe, peRaw + peImportNames, "KERNEL32.dll");
    PutText(pe, peRaw + peImportNames + 32, "other.dll");
    return pe;
}

TEST(ModuleFileHeader, TheLibrariesThatAPeLibraryNeedsAreRead)
{
    EXPECT_EQ(Imports(SamplePe()), std::vector<std::string>());
    EXPECT_EQ(Imports(PeWithImports()), (std::vector<std::string>{"KERNEL32.dll", "other.dll"}));
    EXPECT_EQ(Imports(SampleElf()), std::vector<std::string>());
}

TEST(ModuleFileHeader, ImportsAreReadFromWithinTheFileOnly)
{
    // The text has no end inside the file.
    std::string endless = PeWithImports();
    Put<std::uint32_t>(endless, peRaw + peImportPart + 12, peAddress + peSize - peRaw - 4);
    std::memcpy(endless.data() + peSize - 4, "long", 4);
    EXPECT_EQ(Imports(endless), std::vector<std::string>{"other.dll"});

    std::string outside = PeWithImports();
    Put<std::uint32_t>(outside, peRaw + peImportPart + 12, 0xFFFFFFF0u);
    EXPECT_EQ(Imports(outside), std::vector<std::string>{"other.dll"});

    const std::string whole = PeWithImports();
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_LE(Imports(std::string_view(whole).substr(0, size)).size(), 2u) << size;

    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string damaged = whole;
        for (int i = 0; i < 4; ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        EXPECT_LE(Imports(damaged).size(), 1024u);
    }
}

TEST(ModuleFileHeader, PeFilesOfAnotherKindAreNamed)
{
    ExpectVerdicts(SamplePe(), peTarget,
                   {{"i386", peStart + 4, 0x14C, 2, "32-bit"},
                    {"32-bit optional header", peOptional, 0x10B, 2, "32-bit"},
                    {"aarch64", peStart + 4, 0xAA64, 2, "for another machine (aarch64)"},
                    {"program", peStart + 22, 0x22, 2, "a program or an object file, not a library"},
                    {"signature", peStart, 0, 4, "not a library"},
                    {"header outside", 0x3C, 0xFFFFFFF0, 4, "truncated"},
                    {"section outside", peSections + 20, peSize, 4, "truncated"},
                    {"sections", peStart + 6, 0, 2, "damaged"},
                    {"many sections", peStart + 6, 95, 2, "truncated"},
                    {"optional header", peOptional, 0, 2, "damaged"},
                    {"no exports", peOptional + 112, 0, 4, "no plug-in entry point"},
                    {"exports outside", peOptional + 112, 0xFFFFFFFF, 4, "no plug-in entry point"},
                    {"names outside", peRaw + 32, 0xFFFFFFF0, 4, "no plug-in entry point"},
                    {"name outside", peRaw + 64, 0xFFFFFFFF, 4, "no plug-in entry point"}});
    EXPECT_EQ(Refusal(SamplePe(), elfTarget), "for another system (Windows)");
}

TEST(ModuleFileHeader, OtherFilesAreNamed)
{
    EXPECT_EQ(Refusal(""), "an empty file");
    EXPECT_EQ(Refusal("#!/bin/sh\necho plug-in\n"), "a text file");
    EXPECT_EQ(Refusal("MZ is how this letter begins", peTarget), "a text file");
    EXPECT_EQ(Refusal(std::string(600, '\0')), "not a library");
    EXPECT_EQ(Refusal(std::string_view("\xCF\xFA\xED\xFE\x07\x00\x00\x01", 8)), "for another system (macOS)");
}

TEST(ModuleFileHeader, EveryTruncationIsRefused)
{
    const std::string elf = SampleElf();
    for (std::size_t length = 0; length < elf.size(); ++length)
        EXPECT_NE(Refusal(std::string_view(elf).substr(0, length)), "") << length;
    const std::string pe = SamplePe();
    for (std::size_t length = 0; length < pe.size(); ++length)
        EXPECT_NE(Refusal(std::string_view(pe).substr(0, length), peTarget), "") << length;
}

TEST(ModuleFileHeader, RandomDamageNeverReadsOutsideOrHangs)
{
    std::mt19937 random(4711);
    for (const bool isElf : {true, false}) {
        const std::string whole = isElf ? SampleElf() : SamplePe();
        const ModuleTarget target = isElf ? elfTarget : peTarget;
        std::size_t refused = 0;
        for (int round = 0; round < 5000; ++round) {
            std::string bytes = whole;
            for (int change = 0; change < 8; ++change)
                bytes[random() % bytes.size()] = static_cast<char>(random());
            refused += Refusal(bytes, target).empty() ? 0 : 1;
        }
        EXPECT_GT(refused, 0u);
    }
}

TEST(FileByteReader, ReadsAcrossItsWindowsAndNothingOutside)
{
    const zettesting::TemporaryFolder folder;
    std::string bytes(100000, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31 >> 3);
    zettesting::WriteAll(folder / "bytes", bytes);
    FileByteReader reader(zettesting::ToWide(folder / "bytes"));
    ASSERT_EQ(reader.Size(), bytes.size());

    for (const auto& [offset, size] : std::vector<std::pair<std::size_t, std::size_t>>{
             {0, 16}, {99984, 16}, {16380, 8}, {4095, 40000}, {0, 100000}, {100000, 0}}) {
        std::string read(size, '\x55');
        EXPECT_TRUE(reader.Read(offset, read.data(), size)) << offset;
        EXPECT_EQ(read, bytes.substr(offset, size)) << offset;
    }
    char byte = 0;
    EXPECT_FALSE(reader.Read(100000, &byte, 1));
    EXPECT_FALSE(reader.Read(~std::uint64_t{0}, &byte, 1));
}

} // namespace
} // namespace zetaudiopluginhost
