#include "PortableExecutable.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

PortableExecutable::PortableExecutable(const std::filesystem::path& file) : name(file.string())
{
    std::ifstream stream(file, std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(stream), {});
    if (bytes.compare(0, 2, "MZ") != 0)
        Fail("is no program or library for Windows");
    const std::size_t header = Number(0x3c, 4);
    if (Number(header, 4) != 0x4550 || Number(header + 4, 2) != 0x8664)
        Fail("is not for 64-bit Windows");
    const std::size_t sectionCount = Number(header + 6, 2);
    symbolCount = Number(header + 16, 4);
    const std::size_t optional = header + 24;
    const std::size_t optionalSize = Number(header + 20, 2);
    if (Number(optional, 2) != 0x20b)
        Fail("has a 32-bit header");
    tableCount = Number(optional + 108, 4);
    tables = optional + 112;
    for (std::size_t index = 0; index < sectionCount; ++index) {
        const std::size_t section = optional + optionalSize + index * 40;
        sections.push_back({Number(section + 12, 4), Number(section + 16, 4), Number(section + 20, 4)});
    }
}

std::vector<std::string> PortableExecutable::Imports() const
{
    std::vector<std::string> names;
    AppendImports(Table(1), 20, 12, names);
    AppendImports(Table(13), 32, 4, names);
    return names;
}

std::vector<std::string> PortableExecutable::Exports() const
{
    std::vector<std::string> names;
    const std::uint32_t address = Table(0);
    if (address == 0)
        return names;
    const std::size_t table = OffsetOf(address);
    const std::size_t count = Number(table + 24, 4);
    const std::size_t pointers = count > 0 ? OffsetOf(Number(table + 32, 4)) : 0;
    for (std::size_t index = 0; index < count; ++index)
        names.push_back(Text(Number(pointers + index * 4, 4)));
    return names;
}

void PortableExecutable::Fail(const std::string& what) const
{
    throw std::runtime_error(name + " " + what);
}

std::uint32_t PortableExecutable::Number(std::size_t offset, std::size_t size) const
{
    if (offset > bytes.size() || bytes.size() - offset < size)
        Fail("is cut off");
    std::uint32_t number = 0;
    for (std::size_t index = size; index-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[offset + index]);
    return number;
}

std::string PortableExecutable::Text(std::uint32_t address) const
{
    const std::size_t begin = OffsetOf(address);
    const std::size_t end = bytes.find('\0', begin);
    if (end == std::string::npos)
        Fail("is cut off");
    return bytes.substr(begin, end - begin);
}

std::size_t PortableExecutable::OffsetOf(std::uint32_t address) const
{
    for (const Section& section : sections)
        if (address >= section.address && address - section.address < section.size)
            return section.offset + (address - section.address);
    Fail("has a table outside its sections");
}

std::uint32_t PortableExecutable::Table(std::size_t index) const
{
    return index < tableCount ? Number(tables + index * 8, 4) : 0;
}

void PortableExecutable::AppendImports(std::uint32_t table, std::size_t entrySize, std::size_t nameAt,
                                       std::vector<std::string>& names) const
{
    if (table == 0)
        return;
    for (std::size_t entry = OffsetOf(table);; entry += entrySize) {
        const std::uint32_t importedName = Number(entry + nameAt, 4);
        if (importedName == 0)
            return;
        names.push_back(Text(importedName));
    }
}
