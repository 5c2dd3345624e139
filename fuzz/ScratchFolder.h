#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace zetfuzz {

/// A folder for the files of one process, which removes it when it ends. The folder is in memory when the
/// system has such a place.
class ScratchFolder
{
  public:
    ScratchFolder()
    {
        const std::filesystem::path inMemory = "/dev/shm";
        const auto parent =
            std::filesystem::is_directory(inMemory) ? inMemory : std::filesystem::temp_directory_path();
        std::random_device random;
        do
            folder = parent / ("zetfuzz" + std::to_string(random()));
        while (!std::filesystem::create_directory(folder));
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const noexcept { return folder; }
    std::wstring File(const char* name) const { return (folder / name).wstring(); }
    void Write(const char* name, std::string_view bytes) const
    {
        std::ofstream(folder / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

  private:
    std::filesystem::path folder;
};

} // namespace zetfuzz
