#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// The facts that a 64-bit ELF program or library tells the system's loader. Reads the file at once; throws
/// `std::runtime_error`, which names it, when it is cut off.
class ElfFile
{
  public:
    /// Empty for a file that is no program and no library: an object file, a script.
    static std::optional<ElfFile> Read(const std::filesystem::path& file);

    struct Symbol
    {
        std::string name;
        /// False for one that every library which uses it may have a copy of: code of headers.
        bool isOwn = false;
    };
    /// Others can link with these.
    std::vector<Symbol> Exports() const;
    /// The places in which the loader looks for libraries, entry by entry as they are written; the empty one
    /// stands for the current folder. Nothing when it has no such path.
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
