#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <zettesting/TestPlugins.h>

namespace zettesting {

namespace fs = std::filesystem;

namespace {

/// The places in the two executable formats of the fields that name the machine.
namespace elf {
constexpr std::size_t classAt = 4, dataAt = 5, versionAt = 6, typeAt = 16, machineAt = 18;
constexpr char class32 = 1, class64 = 2, littleEndian = 1, currentVersion = 1;
constexpr std::uint16_t sharedObject = 3, machine386 = 3, machineX86_64 = 62, machineAArch64 = 183;
} // namespace elf
namespace pe {
constexpr std::size_t headerPlaceAt = 0x3C, headerAt = 0x80, machineAt = headerAt + 4,
                      optionalSizeAt = headerAt + 20, flagsAt = headerAt + 22, magicAt = headerAt + 24;
constexpr std::uint16_t machine386 = 0x14C, machineX86_64 = 0x8664, machineAArch64 = 0xAA64;
constexpr std::uint16_t dll = 0x2002, magic32 = 0x10B, magic64 = 0x20B;
} // namespace pe

constexpr std::size_t fileSize = 4096;

bool OnWindows()
{
    return ModuleSuffix() == ".dll";
}

void Put16(std::string& bytes, std::size_t place, std::uint16_t value)
{
    bytes.at(place) = static_cast<char>(value & 0xFF);
    bytes.at(place + 1) = static_cast<char>(value >> 8);
}

std::string ElfFile(char elfClass, std::uint16_t machine)
{
    std::string bytes = "\x7F"
                        "ELF";
    bytes.resize(fileSize, '\0');
    bytes[elf::classAt] = elfClass;
    bytes[elf::dataAt] = elf::littleEndian;
    bytes[elf::versionAt] = elf::currentVersion;
    Put16(bytes, elf::typeAt, elf::sharedObject);
    Put16(bytes, elf::machineAt, machine);
    return bytes;
}

std::string PeFile(std::uint16_t machine, std::uint16_t magic)
{
    std::string bytes = "MZ";
    bytes.resize(fileSize, '\0');
    Put16(bytes, pe::headerPlaceAt, pe::headerAt);
    bytes.replace(pe::headerAt, 2, "PE");
    Put16(bytes, pe::machineAt, machine);
    Put16(bytes, pe::optionalSizeAt, magic == pe::magic32 ? 0xE0 : 0xF0);
    Put16(bytes, pe::flagsAt, pe::dll);
    Put16(bytes, pe::magicAt, magic);
    return bytes;
}

std::string GoodModule()
{
    std::ifstream stream(TestPlugin("good/vst2_effect"), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path Write(const fs::path& folder, const char* title, std::string_view bytes)
{
    const fs::path path = (folder / title).concat(ModuleSuffix());
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush())
        throw std::runtime_error("cannot write " + path.string());
    return path;
}

} // namespace

fs::path MakeTextModule(const fs::path& folder)
{
    return Write(folder, "text", "This is a text file. Somebody gave it the wrong name.\n");
}

fs::path MakeEmptyModule(const fs::path& folder)
{
    return Write(folder, "empty", {});
}

fs::path MakeTruncatedModule(const fs::path& folder, std::size_t bytes)
{
    const std::string whole = GoodModule();
    if (bytes >= whole.size())
        throw std::runtime_error("the module to truncate has only " + std::to_string(whole.size()) +
                                 " bytes");
    return Write(folder, "truncated", std::string_view(whole).substr(0, bytes));
}

fs::path Make32BitModule(const fs::path& folder)
{
    return Write(folder, "32bit",
                 OnWindows() ? PeFile(pe::machine386, pe::magic32) : ElfFile(elf::class32, elf::machine386));
}

fs::path MakeOtherMachineModule(const fs::path& folder)
{
    std::string bytes = GoodModule();
    if (OnWindows()) {
        const std::size_t header = static_cast<unsigned char>(bytes.at(pe::headerPlaceAt)) +
                                   256u * static_cast<unsigned char>(bytes.at(pe::headerPlaceAt + 1));
        Put16(bytes, header + (pe::machineAt - pe::headerAt), pe::machineAArch64);
    } else {
        Put16(bytes, elf::machineAt, elf::machineAArch64);
    }
    return Write(folder, "aarch64", bytes);
}

fs::path MakeOtherSystemModule(const fs::path& folder)
{
    return Write(folder, "othersystem",
                 OnWindows() ? ElfFile(elf::class64, elf::machineX86_64)
                             : PeFile(pe::machineX86_64, pe::magic64));
}

} // namespace zettesting
