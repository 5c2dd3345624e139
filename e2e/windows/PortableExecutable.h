#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Reads what the headers of a 64-bit Windows program or library say about other files. The constructor reads
/// the file, and throws `std::runtime_error`, which names the file, when it is something else or is cut off.
class PortableExecutable
{
  public:
    explicit PortableExecutable(const std::filesystem::path& file);

    /// The libraries that it needs, as their names are spelled, including those that are loaded on first use.
    std::vector<std::string> Imports() const;
    /// The names that it exports, in the table's order, which is alphabetical.
    std::vector<std::string> Exports() const;
    /// How many symbols it holds for debuggers.
    std::uint32_t SymbolCount() const { return symbolCount; }

  private:
    struct Section
    {
        std::uint32_t address;
        std::uint32_t size;
        std::uint32_t offset;
    };

    [[noreturn]] void Fail(const std::string& what) const;
    std::uint32_t Number(std::size_t offset, std::size_t size) const;
    std::string Text(std::uint32_t address) const;
    /// The place in the file of the bytes that memory has at this address.
    std::size_t OffsetOf(std::uint32_t address) const;
    /// The address of one of the header's tables; 0 when it has no such table.
    std::uint32_t Table(std::size_t index) const;
    void AppendImports(std::uint32_t table, std::size_t entrySize, std::size_t nameAt,
                       std::vector<std::string>& names) const;

    std::string name;
    std::string bytes;
    std::size_t tables = 0;
    std::size_t tableCount = 0;
    std::uint32_t symbolCount = 0;
    std::vector<Section> sections;
};
