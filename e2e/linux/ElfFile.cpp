#include "ElfFile.h"

#include <elf.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

std::optional<ElfFile> ElfFile::Read(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::string start(sizeof(Elf64_Ehdr), '\0');
    if (!stream.read(start.data(), static_cast<std::streamsize>(start.size())))
        return std::nullopt;
    Elf64_Ehdr header;
    std::memcpy(&header, start.data(), sizeof header);
    const bool isLoadable = header.e_type == ET_EXEC || header.e_type == ET_DYN;
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64 ||
        !isLoadable)
        return std::nullopt;
    return ElfFile(file.string(), start + std::string(std::istreambuf_iterator<char>(stream), {}));
}

ElfFile::ElfFile(std::string fileName, std::string content)
    : name(std::move(fileName)), bytes(std::move(content))
{
    const auto header = Get<Elf64_Ehdr>(0);
    for (std::size_t index = 0; index < header.e_shnum; ++index) {
        const auto section = Get<Elf64_Shdr>(header.e_shoff + index * sizeof(Elf64_Shdr));
        sections.push_back({section.sh_type, section.sh_link, section.sh_offset, section.sh_size});
    }
}

std::vector<ElfFile::Symbol> ElfFile::Exports() const
{
    std::vector<Symbol> found;
    const Section* const table = Find(SHT_DYNSYM);
    for (std::size_t at = 0; table && at + sizeof(Elf64_Sym) <= table->size; at += sizeof(Elf64_Sym)) {
        const auto symbol = Get<Elf64_Sym>(table->offset + at);
        // The linker marks the ends of sections with names that have no type.
        if (ELF64_ST_TYPE(symbol.st_info) == STT_NOTYPE)
            continue;
        const unsigned bind = ELF64_ST_BIND(symbol.st_info);
        const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
        if (symbol.st_shndx != SHN_UNDEF && bind != STB_LOCAL &&
            (visibility == STV_DEFAULT || visibility == STV_PROTECTED))
            found.push_back({Text(table->link, symbol.st_name), bind == STB_GLOBAL});
    }
    return found;
}

std::vector<std::string> ElfFile::RuntimePath() const
{
    std::vector<std::string> entries;
    const Section* const table = Find(SHT_DYNAMIC);
    for (std::size_t at = 0; table && at + sizeof(Elf64_Dyn) <= table->size; at += sizeof(Elf64_Dyn)) {
        const auto entry = Get<Elf64_Dyn>(table->offset + at);
        if (entry.d_tag != DT_RUNPATH && entry.d_tag != DT_RPATH)
            continue;
        const std::string path = Text(table->link, entry.d_un.d_val);
        for (std::size_t from = 0;;) {
            const std::size_t end = path.find(':', from);
            entries.push_back(path.substr(from, end - from));
            if (end == path.npos)
                break;
            from = end + 1;
        }
    }
    return entries;
}

void ElfFile::Fail(const char* what) const
{
    throw std::runtime_error(name + " " + what);
}

template<typename Record>
Record ElfFile::Get(std::size_t offset) const
{
    Record record;
    if (offset > bytes.size() || bytes.size() - offset < sizeof record)
        Fail("is cut off");
    std::memcpy(&record, bytes.data() + offset, sizeof record);
    return record;
}

std::string ElfFile::Text(std::uint32_t stringSection, std::size_t at) const
{
    if (stringSection >= sections.size())
        Fail("names a section that it does not have");
    const std::size_t start = sections[stringSection].offset + at;
    const std::size_t end = bytes.find('\0', start);
    if (start > bytes.size() || end == bytes.npos)
        Fail("is cut off");
    return bytes.substr(start, end - start);
}

const ElfFile::Section* ElfFile::Find(std::uint32_t type) const
{
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [type](const Section& each) { return each.type == type; });
    return found == sections.end() ? nullptr : &*found;
}
