#include "CompiledResources.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

class Reader
{
  public:
    explicit Reader(std::string content) : bytes(std::move(content)) {}

    bool AtEnd() const { return at >= bytes.size(); }
    std::size_t Place() const { return at; }
    void MoveTo(std::size_t place) { at = place; }
    /// Entries and their bytes begin at multiples of four.
    void Align() { at = (at + 3) / 4 * 4; }

    std::uint32_t Number(std::size_t size)
    {
        const std::string part = Take(size);
        std::uint32_t number = 0;
        for (std::size_t i = size; i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(part[i]);
        return number;
    }
    std::string Take(std::size_t size)
    {
        if (size > bytes.size() || at > bytes.size() - size)
            throw std::runtime_error("the compiled resources are cut off");
        at += size;
        return bytes.substr(at - size, size);
    }
    std::string Name()
    {
        std::uint32_t unit = Number(2);
        if (unit == 0xFFFF)
            return "#" + std::to_string(Number(2));
        std::string name;
        for (; unit != 0; unit = Number(2)) {
            if (unit >= 128)
                throw std::runtime_error("a resource has a name that is not ASCII");
            name.push_back(static_cast<char>(unit));
        }
        return name;
    }

  private:
    std::string bytes;
    std::size_t at = 0;
};

} // namespace

std::vector<CompiledResource> ReadCompiledResources(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    Reader reader(std::string(std::istreambuf_iterator<char>(stream), {}));
    std::vector<CompiledResource> resources;
    while (!reader.AtEnd()) {
        const std::size_t start = reader.Place();
        const std::uint32_t dataSize = reader.Number(4), headerSize = reader.Number(4);
        CompiledResource resource;
        resource.type = reader.Name();
        resource.name = reader.Name();
        reader.MoveTo(start + headerSize);
        resource.bytes = reader.Take(dataSize);
        reader.Align();
        // The first entry is empty, and marks the kind of file.
        if (start > 0)
            resources.push_back(std::move(resource));
    }
    return resources;
}
