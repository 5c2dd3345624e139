#include <zettesting/TemporaryFolder.h>

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <zetcore/string/Utf.h>

#include "RemoveTree.h"

namespace zettesting {

TemporaryFolder::TemporaryFolder()
{
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::ostringstream name;
        name << "zettest-" << std::hex << random() << random();
        path = std::filesystem::temp_directory_path() / name.str();
        if (std::filesystem::create_directory(path)) {
            path = std::filesystem::canonical(path);
            return;
        }
    }
    throw std::runtime_error("cannot make a temporary folder");
}

TemporaryFolder::~TemporaryFolder()
{
    RemoveTree(path);
}

std::wstring TemporaryFolder::Wide() const
{
    return ToWide(path);
}

std::string ReadAll(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return std::move(bytes).str();
}

void WriteAll(const std::filesystem::path& file, std::string_view bytes)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::wstring ToWide(const std::filesystem::path& path)
{
    std::filesystem::path preferred = path;
    preferred.make_preferred();
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return preferred.wstring();
    else
        return zetcore::string::UTF8to16(preferred.string());
}

} // namespace zettesting
