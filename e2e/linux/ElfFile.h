#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The facts that a 64-bit ELF program or library tells the system's loader. The file is read at once. When
/// it is cut off, `std::runtime_error` names it.
class ElfFile
{
  public:
    /// Empty for a file that is neither program nor library, such as an object file or a script.
    static std::optional<ElfFile> Read(const std::filesystem::path& file);

    struct Symbol
    {
        std::string name;
        /// False for code of headers, of which each library may have a copy.
        bool isOwn = false;
    };
    /// The names with which others can link.
    std::vector<Symbol> Exports() const;
    /// The folders in which the loader looks for libraries, as they are written. An empty entry means the
    /// current folder. The result is empty when the file has no such path.
    std::vector<std::string> RuntimePath() const;

  private:
    struct Section
    {
        std::uint32_t type;
        std::uint32_t link;
        std::size_t offset;
        std::size_t size;
    };

    ElfFile(std::string fileName, std::string content);
    [[noreturn]] void Fail(const char* what) const;
    template<typename Record>
    Record Get(std::size_t offset) const;
    std::string Text(std::uint32_t stringSection, std::size_t at) const;
    const Section* Find(std::uint32_t type) const;

    std::string name;
    std::string bytes;
    std::vector<Section> sections;
};
